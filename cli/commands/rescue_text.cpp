// The report of a rescue, as lines for people and as JSON.
#include "cli/commands/rescue_text.h"

#include <algorithm>
#include <cstdint>

#include "cli/shared/json_text.h"
#include "cli/terminal/standard_streams.h"
#include "cli/terminal/text.h"
#include "toolkit/words.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::AppendListed;
using zuna_toolkit::Counted;
using zuna_toolkit::NumberText;
using zuna_toolkit::Rescued;
using zuna_toolkit::RescuedSong;
using zuna_toolkit::RescueReport;
using zuna_toolkit::SongState;

std::string_view StateText(SongState state) {
  switch (state) {
    case SongState::kWhole:
      return "whole";
    case SongState::kPartly:
      return "partly";
    case SongState::kLost:
      break;
  }
  return "lost";
}

/// How many songs of the report have what `has` looks for.
template <typename Has>
std::size_t CountSongs(const RescueReport& report, Has has) {
  return static_cast<std::size_t>(std::count_if(report.songs.begin(), report.songs.end(), has));
}

/// "song 12 at byte 4711 is lost: its beginning cannot be read"
std::string SongText(const RescuedSong& song) {
  std::string text = song.number.empty() ? "a song" : "song " + NumberText(song.number);
  if (song.offset) text += " at byte " + std::to_string(*song.offset);
  if (song.state == SongState::kPartly) text += " is saved in part";
  if (song.state == SongState::kLost) text += " is lost";
  std::string remarks;
  for (const std::string& remark : song.remarks) AppendListed(remarks, remark);
  return text + ": " + remarks;
}

std::string SongJson(const RescuedSong& song) {
  return "{\"number\": " + JsonString(song.number) + ", \"name\": " + JsonString(song.name) +
         ", \"offset\": " + NumberOrNull(song.offset) + ", \"end\": " + NumberOrNull(song.end) +
         ", \"state\": \"" + std::string(StateText(song.state)) +
         "\", \"remarks\": " + JsonStrings(song.remarks) +
         ", \"vouched\": " + (song.vouched ? "true" : "false") + '}';
}

}  // namespace

std::vector<std::string> ProblemLines(const Rescued& rescued) {
  const RescueReport& report = rescued.report;
  std::vector<std::string> lines;
  const auto add = [&](const std::string& text) { lines.push_back(NoteLine(rescued.document.name(), text)); };
  for (const std::string& remark : report.remarks) add(remark);
  for (const RescuedSong& song : report.songs) {
    if (!song.remarks.empty()) add(SongText(song));
  }
  for (const std::string& missing : report.missing) add("not saved: " + missing);
  std::uint64_t unread = 0;
  for (const zuna_toolkit::ByteRange& range : report.unread) unread += range.end - range.begin;
  if (unread > 0) add(Counted(unread, "byte", "bytes") + " of its content cannot be read");
  const std::size_t unvouched = CountSongs(
      report, [](const RescuedSong& song) { return song.state != SongState::kLost && !song.vouched; });
  if (unvouched > 0) {
    add("nothing shows whether " + Counted(unvouched, "song is", "songs are") +
        " unchanged; look through what is saved before it is used");
  }
  return lines;
}

std::string SavedText(const RescueReport& report) {
  const std::size_t saved = report.saved();
  const std::size_t partly =
      CountSongs(report, [](const RescuedSong& song) { return song.state == SongState::kPartly; });
  if (report.complete()) return "everything came back: " + Counted(saved, "song", "songs");
  std::string text = report.known_songs ? std::to_string(saved) + " of " +
                                              Counted(*report.known_songs, "song is", "songs are")
                                        : Counted(saved, "song is", "songs are");
  text += " saved";
  if (partly > 0) text += partly == saved ? " in part" : ", " + std::to_string(partly) + " of them in part";
  return report.known_songs ? text : text + "; how many there were is not known";
}

std::string RescueJson(const Rescued& rescued) {
  const RescueReport& report = rescued.report;
  const zuna_toolkit::FileType& type = rescued.document.type();
  std::string songs;
  for (const RescuedSong& song : report.songs) AppendListed(songs, SongJson(song));
  std::string unread;
  for (const zuna_toolkit::ByteRange& range : report.unread) {
    AppendListed(unread, '[' + std::to_string(range.begin) + ", " + std::to_string(range.end) + ']');
  }
  return "{\"schemaVersion\": 1, " + PathJson("path", rescued.document.name()) + ", \"kind\": \"" +
         std::string(cmn::KindName(type.kind)) + "data\", \"fileVersion\": \"" +
         cmn::VersionText(type.version) + "\", \"complete\": " + (report.complete() ? "true" : "false") +
         ", \"changed\": " + (report.changed ? "true" : "false") +
         ", \"saved\": " + std::to_string(report.saved()) +
         ", \"statedSongs\": " + NumberOrNull(report.stated_songs) +
         ", \"knownSongs\": " + NumberOrNull(report.known_songs) + ", \"songs\": [" + songs +
         "], \"missing\": " + JsonStrings(report.missing) + ", \"unread\": [" + unread +
         "], \"remarks\": " + JsonStrings(report.remarks) + "}\n";
}

}  // namespace zuna_cli
