#include "cli/logs/log_info.h"

#include <numeric>

#include "cli/base/errors.h"
#include "cli/base/table.h"
#include "cli/base/text.h"
#include "cli/base/version_text.h"

namespace zuna_cli {

namespace {

bool IsLegacy(const LogInfo& info) { return info.version == cmn::FileVersion{}; }

std::size_t Sum(const EditCounts& counts) {
  return std::accumulate(counts.begin(), counts.end(), std::size_t{0});
}

/// "2 vamps, 1 marker"
std::string EditsText(const EditCounts& counts) {
  Tally tally;
  for (std::size_t i = 0; i < counts.size(); ++i) {
    if (counts[i] > 0) tally.Add(kEditKinds[i].one, kEditKinds[i].many, counts[i]);
  }
  return tally.empty() ? "none" : tally.ToString();
}

std::vector<std::string> RowOf(const CL::SongLog& song, bool legacy) {
  return {Printable(song.song_number),
          Printable(song.song_name),
          legacy ? "-" : std::to_string(song.division),
          std::to_string(song.song_length),
          legacy ? "-" : std::to_string(song.attacca),
          EditsText(CountEdits(song))};
}

std::string SongJson(const CL::SongLog& song, bool legacy) {
  std::string json = "{\"songNumber\": " + JsonString(song.song_number) +
                     ", \"songName\": " + JsonString(song.song_name) +
                     ", \"division\": " + (legacy ? "null" : std::to_string(song.division)) +
                     ", \"songLength\": " + std::to_string(song.song_length) +
                     ", \"attacca\": " + (legacy ? "null" : std::to_string(song.attacca));
  const EditCounts counts = CountEdits(song);
  for (std::size_t i = 0; i < counts.size(); ++i) {
    json += std::string(", \"") + kEditKinds[i].key + "\": " + std::to_string(counts[i]);
  }
  return json + "}";
}

}  // namespace

EditCounts CountEdits(const CL::SongLog& song) {
  return {song.vamps->events.size(),      song.repeats->events.size(),      song.cuts->events.size(),
          song.transposes->events.size(), song.tempo_scales->events.size(), song.clicks->events.size(),
          song.fermatas->events.size(),   song.markers->events.size(),      song.caesuras->events.size()};
}

std::string CountsText(const CL::ChangeLog& log) {
  std::size_t edits = 0;
  for (const auto& [number, song] : log.song_logs()) edits += Sum(CountEdits(*song));
  return Counted(log.song_logs().size(), "song", "songs") + ", " + Counted(edits, "edit", "edits");
}

std::string InfoText(const LogInfo& info) {
  std::string text = Printable(info.path) + ": log, version " + VersionText(info.version) + ", \"" +
                     Printable(info.log.show_name) + "\", " + CountsText(info.log) + '\n';
  if (info.log.song_logs().empty()) return text;
  Table table("<<>>><", {"number", "name", "division", "length", "attacca", "edits"});
  for (const auto& [number, song] : info.log.song_logs()) table.Add(RowOf(*song, IsLegacy(info)));
  return text + table.ToString();
}

std::string InfoJson(const LogInfo& info) {
  const CL::ChangeLog& log = info.log;
  std::string json = "{\"path\": " + JsonString(info.path) +
                     ", \"kind\": \"logdata\", \"fileVersion\": " + JsonString(VersionText(info.version)) +
                     ", \"showName\": " + JsonString(log.show_name) +
                     ", \"logLabel\": " + JsonString(log.log_label) +
                     ", \"identifier\": " + JsonString(log.identifier.ToString()) + ", \"tagPair\": [" +
                     std::to_string(log.log_tag_pair.first) + ", " + std::to_string(log.log_tag_pair.second) +
                     "], \"songLogs\": [";
  const char* separator = "";
  for (const auto& [number, song] : log.song_logs()) {
    json += separator + SongJson(*song, IsLegacy(info));
    separator = ", ";
  }
  return json + "]}";
}

}  // namespace zuna_cli
