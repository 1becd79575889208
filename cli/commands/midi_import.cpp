// zuna-convert midi import
#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>

#include "cli/shared/context.h"
#include "cli/shared/document_text.h"
#include "cli/shared/input.h"
#include "cli/terminal/standard_streams.h"
#include "toolkit/error.h"
#include "toolkit/midi/songs.h"
#include "toolkit/smf/file.h"

namespace zuna_cli {

using zuna_toolkit::Counted;

namespace smf = zuna_toolkit::smf;

namespace {

struct MidiImportOptions {
  std::vector<std::string> inputs;
  std::vector<std::string> song_numbers;
  bool numbers_from_names = false;
  std::optional<std::string> show_name;
  Output output;
  cmn::FileVersion version;
};

/// The last component of `path` without its extension; empty for a standard stream.
std::string Stem(const std::string& path) {
  return path == kStandardStream ? "" : std::filesystem::path(path).stem().string();
}

/// The size of the count after the number of a song that rescue gave one, " (2)"; 0 where there is none at
/// `at`.
std::size_t CountSize(const std::string& stem, std::size_t at) {
  if (!stem.substr(at).starts_with(" (")) return 0;
  const std::size_t digits = at + 2;
  const std::size_t end = std::min(stem.find_first_not_of("0123456789", digits), stem.size());
  const bool is_count = end > digits && stem.substr(end).starts_with(") ");
  return is_count ? end + 1 - at : 0;
}

/// The number in the name of a file that `midi export` wrote, "12a Opening.mid" or "12a (2) Opening.mid";
/// empty for other names.
std::string NumberInName(const std::string& path) {
  const std::string stem = Stem(path);
  const std::size_t end = stem.find(' ');
  const bool is_number = end != std::string::npos && stem.front() >= '0' && stem.front() <= '9';
  return is_number ? stem.substr(0, end + CountSize(stem, end)) : "";
}

/// The name of a song whose file has none for it: that of the file, without its number.
std::string TitleOf(const std::string& path, bool has_number) {
  return has_number ? Stem(path).substr(NumberInName(path).size() + 1) : Stem(path);
}

std::vector<std::string> NumbersInNames(const std::vector<std::string>& paths) {
  std::vector<std::string> numbers;
  for (const std::string& path : paths) {
    numbers.push_back(NumberInName(path));
    if (!numbers.back().empty()) continue;
    throw Failure(ErrorCode::kUsage, InputName(path), "does not begin with a number and a space",
                  "give --song-number for each file in place of --numbers-from-names");
  }
  return numbers;
}

/// Names the first file that gets another number than its name has: shells sort 1, 10, 2.
void NoteOtherNumber(const std::vector<std::string>& paths, Context& context) {
  for (std::size_t i = 0; i < paths.size(); ++i) {
    const std::string in_name = NumberInName(paths[i]);
    const std::string number = std::to_string(i + 1);
    if (in_name.empty() || in_name == number) continue;
    std::string text = "becomes song " + number;
    text += "; with --numbers-from-names it would be song " + in_name;
    return context.Note(paths[i], text);
  }
}

/// The song numbers as given, one a file, out of the names of the files, or "1", "2", …
std::vector<std::string> SongNumbers(const MidiImportOptions& options, Context& context) {
  std::vector<std::string> numbers = options.song_numbers;
  if (options.numbers_from_names && !numbers.empty()) {
    throw Failure(ErrorCode::kUsage, "command line",
                  "--song-number and --numbers-from-names contradict each other", "give one of them");
  }
  if (options.numbers_from_names) numbers = NumbersInNames(options.inputs);
  if (numbers.empty()) {
    for (std::size_t i = 1; i <= options.inputs.size(); ++i) numbers.push_back(std::to_string(i));
    NoteOtherNumber(options.inputs, context);
  }
  if (numbers.size() != options.inputs.size()) {
    throw Failure(ErrorCode::kUsage, "--song-number",
                  "stands for " + Counted(numbers.size(), "song", "songs") + " and there " +
                      (options.inputs.size() == 1 ? "is " : "are ") +
                      Counted(options.inputs.size(), "file", "files"),
                  "give it once for each, or not at all");
  }
  if (std::set<std::string>(numbers.begin(), numbers.end()).size() != numbers.size()) {
    throw Failure(ErrorCode::kUsage, options.numbers_from_names ? "--numbers-from-names" : "--song-number",
                  "gives one number twice", "give each song its own");
  }
  return numbers;
}

void NoteWhatTheReaderFound(const smf::ReadNotes& notes, std::size_t tracks, const std::string& name,
                            Context& context) {
  if (notes.declared_tracks != tracks) {
    context.Note(name, "the header says " + Counted(notes.declared_tracks, "track", "tracks") +
                           ", and the file has " + std::to_string(tracks));
  }
  zuna_toolkit::Tally odd;
  odd.Add("unknown chunk", "unknown chunks", notes.unknown_chunks);
  odd.Add("byte after the end of its track", "bytes after the end of their track", notes.bytes_after_end);
  odd.Add("byte after the last chunk", "bytes after the last chunk", notes.bytes_after_last_chunk);
  if (!odd.empty()) context.Note(name, "skipped: " + odd.ToString());
  if (notes.missing_ends > 0) {
    context.Note(name, Counted(notes.missing_ends, "track has", "tracks have") + " no End of Track");
  }
}

/// What a song is called.
struct Song {
  std::string number;
  std::string title;  ///< unless the file tells its name
};

/// Reads the file called `name` and makes a song of it.
std::shared_ptr<zuna_midi::SongData> ImportBytes(const std::vector<std::uint8_t>& bytes,
                                                 const std::string& name, const Song& song,
                                                 zuna_toolkit::midi::Report& report, Context& context) {
  try {
    smf::ReadNotes notes;
    const smf::File file = smf::Read(bytes, notes);
    NoteWhatTheReaderFound(notes, file.tracks.size(), name, context);
    return zuna_toolkit::midi::ImportSong(file, song.number, song.title, report);
  } catch (const zuna_toolkit::Error& error) {
    throw error.WithFile(name);
  }
}

std::shared_ptr<zuna_midi::SongData> ImportFile(const std::string& path, const Song& song, Context& context) {
  const std::string name = InputName(path);
  zuna_toolkit::midi::Report report;
  auto imported = ImportBytes(ReadInput(path, zuna_toolkit::kMaxFileSize), name, song, report, context);
  if (!report.not_kept.empty()) context.Note(name, "not kept: " + report.not_kept.ToString());
  for (const std::string& remark : report.remarks) context.Note(name, remark);
  return imported;
}

void RunMidiImport(const MidiImportOptions& options, Context& context) {
  Destination destination = context.CheckPaths(options.output, options.inputs);
  const std::vector<std::string> numbers = SongNumbers(options, context);
  const Keys keys = context.ReadKeys();
  zuna_midi::ShowData show;
  show.show_name = options.show_name.value_or(Stem(options.output.path));
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const std::string& path = options.inputs[i];
    show.AddSongData(ImportFile(path, {numbers[i], TitleOf(path, options.numbers_from_names)}, context));
  }
  const zuna_toolkit::Document document(std::move(show), options.version, destination.name());
  context.Note(document.name(), CountsText(document) + ", MIDI -> " + cmn::VersionText(options.version));
  context.Seal(document, keys.front().material(), destination);
}

}  // namespace

void AddMidiImportCommand(CLI::App& midi, Context& context) {
  CLI::App* command = midi.add_subcommand("import", "Make a show of MIDI files, one song each");
  AddSharedOptions(*command, context);
  const auto options = std::make_shared<MidiImportOptions>();
  command->add_option("MID", options->inputs, "The MIDI files of format 0 or 1; - for standard input")
      ->required();
  AddOutput(*command, options->output);
  AddTarget(*command, options->version);
  command
      ->add_option(
          "--song-number", options->song_numbers,
          "The number of a song, such as 12a; once for each file in their order, or not at all: then "
          "1, 2, 3 and so on")
      ->type_name("NUMBER")
      ->allow_extra_args(false)
      ->take_all();
  command->add_flag("--numbers-from-names", options->numbers_from_names,
                    "Take the numbers of the songs from the names of the files, as midi export writes them: "
                    "\"12a Opening.mid\" is song 12a");
  command->add_option("--show-name", options->show_name, "The show's name; the name of OUT unless given")
      ->type_name("NAME");
  context.SetWork(*command, [options, &context] { RunMidiImport(*options, context); });
}

}  // namespace zuna_cli
