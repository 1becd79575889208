// zuna-convert print
#include <memory>
#include <optional>
#include <sstream>
#include <type_traits>

#include "CL/song_log.h"
#include "cli/shared/context.h"
#include "cli/shared/input.h"
#include "cli/terminal/standard_streams.h"
#include "cli/terminal/text.h"
#include "format_converter/version0/containers/song_log.h"
#include "toolkit/conversion/conversion.h"
#include "toolkit/document/song_not_found.h"
#include "toolkit/smf/file.h"
#include "toolkit/words.h"
#include "zuna_midi/song_data.h"

namespace zuna_cli {

namespace {

namespace smf = zuna_toolkit::smf;

struct PrintOptions {
  std::string input;
  std::optional<std::string> song;
};

// A name is made printable before the library writes it: a line break in it must not look like a new line of
// the listing.

void PrintSong(version0::SongLogV0 song, std::ostream& os) {
  song.songNumber_ = Printable(song.songNumber_);
  song.songName_ = Printable(song.songName_);
  for (version0::XScoreMarker& marker : song.score_markers) marker.text = Printable(marker.text);
  song.write_string_detailed(os, 0);
}

/// Replaces a list by a copy whose labels are printable; the log itself shares the old one.
template <typename Event>
void MakePrintable(CL::SongLog::SharedList<Event>& list) {
  if (!list) return;
  list = std::make_shared<CL::EventList<Event>>(*list);
  for (Event& event : list->events) {
    event.label = Printable(event.label);
    if constexpr (std::is_same_v<Event, CL::Marker>) event.text = Printable(event.text);
  }
}

void PrintSong(const std::shared_ptr<CL::SongLog>& original, std::ostream& os) {
  CL::SongLog song = *original;
  song.song_number = Printable(song.song_number);
  song.song_name = Printable(song.song_name);
  MakePrintable(song.vamps);
  MakePrintable(song.repeats);
  MakePrintable(song.cuts);
  MakePrintable(song.transposes);
  MakePrintable(song.tempo_scales);
  MakePrintable(song.markers);
  MakePrintable(song.clicks);
  MakePrintable(song.fermatas);
  MakePrintable(song.caesuras);
  song.WriteStringDetailed(os, 0);
}

/// The program changes, in the form of the library's own report.
void PrintSong(const std::shared_ptr<zuna_midi::SongData>& song, std::ostream& os) {
  os << "Song " << Printable(song->song_number) << ": " << Printable(song->song_name) << ":\n";
  for (const auto& [number, voice] : song->voice_data->tracks()) {
    os << "  " << Printable(voice->name) << ":\n";
    for (const auto& [time, message] : voice->messages) {
      if ((message.status & smf::kKindMask) != smf::kProgramChange) continue;
      os << "    " << time << ": ";
      message.WriteString(os);
      os << '\n';
    }
  }
}

/// Throws zuna_toolkit::Error (kSongNotFound) where the song asked for is none of `songs`.
template <typename Songs>
void RequireSong(const Songs& songs, const PrintOptions& options) {
  if (!options.song || songs.contains(*options.song)) return;
  zuna_toolkit::ThrowSongNotFound(InputName(options.input), *options.song, songs);
}

/// Prints the song asked for, or all, piece by piece: the text may be much larger than the songs.
template <typename Songs>
void PrintSongs(const Songs& songs, const PrintOptions& options) {
  RequireSong(songs, options);
  constexpr std::streamoff kPiece = 65536;  // bytes
  std::ostringstream text;
  text.exceptions(std::ios_base::badbit);  // it would drop what it has no memory for
  for (const auto& [number, song] : songs) {
    if (options.song && number != *options.song) continue;
    PrintSong(song, text);
    if (text.tellp() < kPiece) continue;
    WriteStandardOutput(text.str());
    text.str("");
  }
  WriteStandardOutput(text.str());
}

void PrintDocument(const zuna_toolkit::Document& document, const PrintOptions& options) {
  if (!document.type().is_log()) {
    const zuna_toolkit::Document show = zuna_toolkit::CurrentForm(document);
    return PrintSongs(show.As<zuna_midi::ShowData>()->songs(), options);
  }
  if (const auto* legacy = document.As<zuna_toolkit::LegacyLog>()) {
    return PrintSongs(legacy->log.songs, options);
  }
  PrintSongs(document.As<CL::ChangeLog>()->song_logs(), options);
}

void RunPrint(const PrintOptions& options, const Context& context) {
  context.CheckInputs({options.input});
  const Keys keys = context.ReadKeys();
  PrintDocument(ReadEncryptedOrPlain(options.input, keys).document, options);
}

}  // namespace

void AddPrintCommand(CLI::App& app, Context& context) {
  CLI::App* command = app.add_subcommand(
      "print", "Print the edits of a log, or the program changes of a show, encrypted or not, as text");
  AddSharedOptions(*command, context);
  const auto options = std::make_shared<PrintOptions>();
  AddInput(*command, options->input);
  command->add_option("--song", options->song, "Only the song of this number")->type_name("NUMBER");
  context.SetWork(*command, [options, &context] { RunPrint(*options, context); });
}

}  // namespace zuna_cli
