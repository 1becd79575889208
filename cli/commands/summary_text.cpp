// What there is to tell about a document, as text and as JSON.
#include "cli/commands/document_text.h"

#include <map>
#include <vector>

#include "cli/terminal/table.h"
#include "cli/terminal/text.h"
#include "cmn/file_format.h"
#include "toolkit/document/summary.h"
#include "toolkit/words.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Count;
using zuna_toolkit::Counted;
using zuna_toolkit::Document;
using zuna_toolkit::SongSummary;
using zuna_toolkit::Summary;

/// The sum of a count over all songs; of all counts for an empty key.
std::size_t Sum(const Summary& summary, std::string_view key) {
  std::size_t sum = 0;
  for (const SongSummary& song : summary.songs) {
    for (const Count& count : song.counts) {
      if (key.empty() || count.key == key) sum += count.value;
    }
  }
  return sum;
}

std::string CountsText(const Summary& summary) {
  const std::string songs = Counted(summary.songs.size(), "song", "songs") + ", ";
  if (summary.log) return songs + Counted(Sum(summary, ""), "edit", "edits");
  return songs + Counted(Sum(summary, "voices"), "voice", "voices") + ", " +
         Counted(Sum(summary, "events"), "event", "events");
}

/// "2 vamps, 1 marker"
std::string EditsText(const SongSummary& song) {
  zuna_toolkit::Tally tally;
  for (const Count& count : song.counts) {
    tally.Add(std::string(count.one), std::string(count.many), count.value);
  }
  return tally.empty() ? "none" : tally.ToString();
}

/// "-" for a number that is not known.
template <typename Number>
std::string NumberText(const std::optional<Number>& number, const std::string& unknown) {
  return number ? std::to_string(*number) : unknown;
}

Table ShowTable(const Summary& summary) {
  Table table("<<>>>>>>>",
              {"number", "name", "division", "length", "voices", "events", "bars", "tempos", "meters"});
  for (const SongSummary& song : summary.songs) {
    std::vector<std::string> row{Printable(song.number), Printable(song.name), NumberText(song.division, "-"),
                                 std::to_string(song.length)};
    for (const Count& count : song.counts) row.push_back(std::to_string(count.value));
    table.Add(row);
  }
  return table;
}

Table LogTable(const Summary& summary) {
  Table table("<<>>><", {"number", "name", "division", "length", "attacca", "edits"});
  for (const SongSummary& song : summary.songs) {
    table.Add({Printable(song.number), Printable(song.name), NumberText(song.division, "-"),
               std::to_string(song.length), NumberText(song.attacca, "-"), EditsText(song)});
  }
  return table;
}

std::string SongJson(const SongSummary& song, bool is_log) {
  std::string json = "{\"songNumber\": " + JsonString(song.number) +
                     ", \"songName\": " + JsonString(song.name) +
                     ", \"division\": " + NumberText(song.division, "null") +
                     ", \"songLength\": " + std::to_string(song.length);
  if (is_log) json += ", \"attacca\": " + NumberText(song.attacca, "null");
  for (const Count& count : song.counts) {
    json += ", \"" + std::string(count.key) + "\": " + std::to_string(count.value);
  }
  return json + "}";
}

std::string HeaderJson(const zuna_toolkit::LogHeader& header) {
  return ", \"logLabel\": " + JsonString(header.label) +
         ", \"identifier\": " + JsonString(header.identifier) + ", \"tagPair\": [" +
         std::to_string(header.tag_pair.first) + ", " + std::to_string(header.tag_pair.second) + "]";
}

}  // namespace

std::string CountsText(const Document& document) { return CountsText(zuna_toolkit::Summarise(document)); }

std::string InfoText(const Document& document) {
  const Summary summary = zuna_toolkit::Summarise(document);
  std::string text = Printable(document.name()) + ": " + std::string(cmn::KindName(document.type().kind)) +
                     ", version " + cmn::VersionText(document.type().version);
  if (summary.show_name) text += ", \"" + Printable(*summary.show_name) + '"';
  text += ", " + CountsText(summary) + '\n';
  if (summary.songs.empty()) return text;
  return text + (summary.log ? LogTable(summary) : ShowTable(summary)).ToString();
}

std::string InfoJson(const Document& document) {
  const Summary summary = zuna_toolkit::Summarise(document);
  std::string json = "{\"path\": " + JsonString(document.name()) + ", \"kind\": \"" +
                     std::string(cmn::KindName(document.type().kind)) + "data\", \"fileVersion\": \"" +
                     cmn::VersionText(document.type().version) +
                     "\", \"showName\": " + (summary.show_name ? JsonString(*summary.show_name) : "null");
  if (summary.log) json += HeaderJson(*summary.log);
  json += summary.log ? ", \"songLogs\": [" : ", \"songs\": [";
  const char* separator = "";
  for (const SongSummary& song : summary.songs) {
    json += separator + SongJson(song, summary.log.has_value());
    separator = ", ";
  }
  return json + "]}";
}

}  // namespace zuna_cli
