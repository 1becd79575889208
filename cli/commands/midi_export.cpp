// zuna-convert midi export
#include <filesystem>
#include <memory>

#include "cli/commands/context.h"
#include "cli/commands/input.h"
#include "kit/path.h"
#include "toolkit/conversion/conversion.h"
#include "toolkit/error.h"
#include "toolkit/midi/file_names.h"
#include "toolkit/midi/songs.h"
#include "toolkit/smf/file.h"

namespace zuna_cli {

namespace smf = zuna_toolkit::smf;

namespace {

constexpr unsigned kNewFileMode = 0666;

struct Options {
  std::string input;
  std::string folder;
  bool force = false;
};

struct MidiFile {
  std::string path;
  std::string bytes;
};

MidiFile ExportOne(const zuna_midi::SongData& song, const std::string& path, const std::string& input,
                   Context& context) {
  zuna_toolkit::midi::Report report;
  const std::string name = input + ": song " + song.song_number;
  std::string bytes;
  try {
    bytes = smf::Write(zuna_toolkit::midi::ExportSong(song, report));
  } catch (const zuna_toolkit::Error& error) {
    throw error.WithFile(name);
  }
  if (!report.not_kept.empty()) context.Note(name, "not kept: " + report.not_kept.ToString());
  for (const std::string& remark : report.remarks) context.Note(name, remark);
  return {path, std::move(bytes)};
}

/// The paths of the files for all songs. Throws Failure where one may not be written.
std::vector<std::string> PathsFor(const zuna_midi::ShowData& show, const Options& options) {
  std::vector<std::string> paths;
  zuna_toolkit::midi::FileNames names;
  for (const auto& [number, song] : show.songs()) {
    paths.push_back(kit::path::Join(options.folder, names.Make(number, song->song_name)));
    Output{paths.back(), options.force}.Check({options.input});
  }
  return paths;
}

/// Makes all files in memory, so that a song that cannot be exported leaves nothing behind.
std::vector<MidiFile> ExportAll(const Options& options, Context& context) {
  const Keys keys = context.ReadKeys();
  zuna_toolkit::OpenedFile file = OpenInput(options.input, keys).file;
  const zuna_toolkit::Document document =
      zuna_toolkit::CurrentForm(zuna_toolkit::ReadDocument(file, zuna_toolkit::Expected::kShow));
  const zuna_midi::ShowData& show = *document.As<zuna_midi::ShowData>();
  const std::vector<std::string> paths = PathsFor(show, options);
  auto path = paths.begin();
  std::vector<MidiFile> files;
  for (const auto& [number, song] : show.songs()) {
    files.push_back(ExportOne(*song, *path++, file.name(), context));
  }
  return files;
}

/// Writes all files; where one cannot be written, the new ones before it are removed again.
void WriteAll(const std::vector<MidiFile>& files) {
  std::error_code ignored;
  std::vector<std::string> created;
  try {
    for (const MidiFile& file : files) {
      const bool is_new = !std::filesystem::exists(file.path, ignored);
      WritePlainFile(file.path, file.bytes, kNewFileMode);
      if (is_new) created.push_back(file.path);
    }
  } catch (const std::exception&) {
    for (const std::string& path : created) std::filesystem::remove(path, ignored);
    throw;
  }
}

void Run(const Options& options, Context& context) {
  context.CheckInputs({options.input});
  RequireFolder(options.folder, "create it first");
  const std::vector<MidiFile> files = ExportAll(options, context);
  context.Note(options.folder, zuna_toolkit::Counted(files.size(), "MIDI file", "MIDI files") + " written");
  WriteAll(files);
}

}  // namespace

void AddMidiExportCommand(CLI::App& midi, Context& context) {
  CLI::App* command =
      midi.add_subcommand("export", "Write every song of a show of any version as a MIDI file");
  AddSharedOptions(*command, context);
  const auto options = std::make_shared<Options>();
  AddInput(*command, options->input);
  command->add_option("--out-dir", options->folder, "The folder for the files \"NUMBER NAME.mid\"")
      ->required()
      ->type_name("DIR");
  command->add_flag("--force", options->force, "Replace files that exist");
  context.SetWork(*command, [options, &context] { Run(*options, context); });
}

}  // namespace zuna_cli
