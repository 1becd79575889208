// zuna-convert midi export
#include <cstdint>
#include <memory>

#include "cli/shared/context.h"
#include "cli/shared/input.h"
#include "cli/shared/output_set.h"
#include "kit/path.h"
#include "toolkit/conversion/conversion.h"
#include "toolkit/error.h"
#include "toolkit/midi/file_names.h"
#include "toolkit/midi/songs.h"
#include "toolkit/smf/file.h"
#include "toolkit/words.h"

namespace zuna_cli {

namespace smf = zuna_toolkit::smf;

namespace {

constexpr unsigned kNewFileMode = 0666;

struct MidiExportOptions {
  std::string input;
  std::string folder;
  bool force = false;
};

std::string ExportOne(const zuna_midi::SongData& song, const std::string& input, Context& context) {
  zuna_toolkit::midi::Report report;
  const std::string name = input + ": song " + zuna_toolkit::NumberText(song.song_number);
  std::string bytes;
  try {
    bytes = smf::Write(zuna_toolkit::midi::ExportSong(song, report));
  } catch (const zuna_toolkit::Error& error) {
    throw error.WithFile(name);
  }
  if (!report.not_kept.empty()) context.Note(name, "not kept: " + report.not_kept.ToString());
  for (const std::string& remark : report.remarks) context.Note(name, remark);
  return bytes;
}

/// Adds the files for all songs, none of which may be one of `inputs`. Throws what OutputSet::Add() throws.
void AddFiles(const zuna_midi::ShowData& show, const std::string& folder,
              const std::vector<std::string>& inputs, OutputSet& files) {
  zuna_toolkit::midi::FileNames names;
  for (const auto& [number, song] : show.songs()) {
    files.Add(kit::path::Join(folder, names.Make(number, song->song_name)), inputs);
  }
}

void RunMidiExport(const MidiExportOptions& options, Context& context) {
  const std::vector<std::string> inputs = context.CheckInputs({options.input});
  RequireFolder(options.folder, "create it first");
  const Keys keys = context.ReadKeys();
  const zuna_toolkit::Document document = zuna_toolkit::CurrentForm(
      ReadEncryptedOrPlain(options.input, keys, zuna_toolkit::Expected::kShow).document);
  const zuna_midi::ShowData& show = *document.As<zuna_midi::ShowData>();
  OutputSet files(options.force);
  AddFiles(show, options.folder, inputs, files);
  std::size_t file = 0;
  for (const auto& [number, song] : show.songs()) {
    const std::string bytes = ExportOne(*song, document.name(), context);
    files.Write(file++, {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}, kNewFileMode);
  }
  context.Note(options.folder, zuna_toolkit::Counted(files.size(), "MIDI file", "MIDI files") + " written");
  files.Commit();
}

}  // namespace

void AddMidiExportCommand(CLI::App& midi, Context& context) {
  CLI::App* command = midi.add_subcommand(
      "export", "Write every song of a show of any version, encrypted or not, as a MIDI file");
  AddSharedOptions(*command, context);
  const auto options = std::make_shared<MidiExportOptions>();
  AddInput(*command, options->input);
  command->add_option("--out-dir", options->folder, "The folder for the files \"NUMBER NAME.mid\"")
      ->required()
      ->type_name("DIR");
  command->add_flag("--force", options->force, "Replace files that exist");
  context.SetWork(*command, [options, &context] { RunMidiExport(*options, context); });
}

}  // namespace zuna_cli
