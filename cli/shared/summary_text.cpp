// What there is to tell about a document, as text and as JSON.
#include "cli/shared/document_text.h"

#include <unistd.h>

#include <algorithm>
#include <map>
#include <sstream>
#include <vector>

#include "cli/shared/json_text.h"
#include "cli/terminal/columns.h"
#include "cli/terminal/table.h"
#include "cli/terminal/text.h"
#include "cmn/file_format.h"
#include "toolkit/document/summary.h"
#include "toolkit/document/text_form.h"
#include "toolkit/words.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Count;
using zuna_toolkit::Counted;
using zuna_toolkit::Document;
using zuna_toolkit::SongSummary;
using zuna_toolkit::Summary;

/// Counts over all songs.
struct Totals {
  std::size_t songs = 0;
  std::size_t voices = 0;
  std::size_t events = 0;
  std::size_t all = 0;  ///< of every kind

  void Add(const SongSummary& song) {
    ++songs;
    for (const Count& count : song.counts) {
      if (count.key == "voices") voices += count.value;
      if (count.key == "events") events += count.value;
      all += count.value;
    }
  }
};

Totals TotalsOf(const Document& document) {
  Totals totals;
  zuna_toolkit::SummariseSongs(document, [&](const SongSummary& song) { totals.Add(song); });
  return totals;
}

std::string CountsText(const Totals& totals, bool is_log) {
  const std::string songs = Counted(totals.songs, "song", "songs") + ", ";
  if (is_log) return songs + Counted(totals.all, "edit", "edits");
  return songs + Counted(totals.voices, "voice", "voices") + ", " + Counted(totals.events, "event", "events");
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
std::string NumberOrDash(const std::optional<Number>& number) {
  return number ? std::to_string(*number) : "-";
}

Table::Row Titles(bool is_log) {
  if (is_log) return {"number", "name", "division", "length", "attacca", "edits"};
  return {"number", "name", "division", "length", "voices", "events", "bars", "tempos", "meters"};
}

Table::Row RowOf(const SongSummary& song, bool is_log) {
  Table::Row row{Printable(song.number), Printable(song.name), NumberOrDash(song.division),
                 std::to_string(song.length)};
  if (is_log) {
    row.push_back(NumberOrDash(song.attacca));
    row.push_back(EditsText(song));
  } else {
    for (const Count& count : song.counts) row.push_back(std::to_string(count.value));
  }
  return row;
}

std::string SongsTable(const Document& document) {
  const bool is_log = document.type().is_log();
  const Table::Row titles = Titles(is_log);
  Table table(is_log ? "<<>>><" : "<<>>>>>>>", TerminalColumns(STDOUT_FILENO));
  table.Fit(titles);
  zuna_toolkit::SummariseSongs(document, [&](const SongSummary& song) { table.Fit(RowOf(song, is_log)); });
  std::string text = table.Line(titles);
  zuna_toolkit::SummariseSongs(document,
                               [&](const SongSummary& song) { text += table.Line(RowOf(song, is_log)); });
  return text;
}

std::string SongJson(const SongSummary& song, bool is_log) {
  std::string json =
      "{\"songNumber\": " + JsonString(song.number) + ", \"songName\": " + JsonString(song.name) +
      ", \"division\": " + NumberOrNull(song.division) + ", \"songLength\": " + std::to_string(song.length);
  if (is_log) json += ", \"attacca\": " + NumberOrNull(song.attacca);
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

std::string SongsText(const std::vector<std::string>& numbers) {
  constexpr std::size_t kMost = 8;
  std::string list;
  for (std::size_t i = 0; i < std::min(numbers.size(), kMost); ++i) {
    zuna_toolkit::AppendListed(list, zuna_toolkit::NumberText(numbers[i]));
  }
  if (numbers.size() > kMost) list += " and " + std::to_string(numbers.size() - kMost) + " more";
  return (numbers.size() == 1 ? "song " : "songs ") + list;
}

std::string CountsText(const Document& document) {
  return CountsText(TotalsOf(document), document.type().is_log());
}

std::string InfoText(const Document& document, bool is_encrypted) {
  const Summary summary = zuna_toolkit::SummariseWhole(document);
  std::string text = Printable(document.name()) + ": " + std::string(cmn::KindName(document.type().kind)) +
                     ", version " + cmn::VersionText(document.type().version);
  if (!is_encrypted) text += ", not encrypted";
  if (summary.show_name) text += ", \"" + Printable(*summary.show_name) + '"';
  const Totals totals = TotalsOf(document);
  text += ", " + CountsText(totals, document.type().is_log()) + '\n';
  if (totals.songs > 0) text += SongsTable(document);
  return text;
}

std::string TextFormOf(const Document& document) {
  std::ostringstream text;
  text.exceptions(std::ios_base::badbit);  // it would drop what it has no memory for
  zuna_toolkit::WriteTextForm(document, text);
  return text.str();
}

std::string InfoJson(const Document& document, const std::string& path, bool is_encrypted) {
  const Summary summary = zuna_toolkit::SummariseWhole(document);
  std::string json = "{\"schemaVersion\": 1, " + PathJson("path", path) + ", \"kind\": \"" +
                     std::string(cmn::KindName(document.type().kind)) + "data\", \"fileVersion\": \"" +
                     cmn::VersionText(document.type().version) +
                     "\", \"encrypted\": " + (is_encrypted ? "true" : "false") +
                     ", \"showName\": " + (summary.show_name ? JsonString(*summary.show_name) : "null");
  if (summary.log) json += HeaderJson(*summary.log);
  json += summary.log ? ", \"songLogs\": [" : ", \"songs\": [";
  const char* separator = "";
  zuna_toolkit::SummariseSongs(document, [&](const SongSummary& song) {
    json += separator + SongJson(song, summary.log.has_value());
    separator = ", ";
  });
  json += "]}";
  return json;
}

}  // namespace zuna_cli
