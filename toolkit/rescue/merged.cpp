// One document of several that were joined in one file (docs/damaged-files.md).
#include "toolkit/rescue/internal/merged.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "toolkit/rescue/internal/current_songs.h"

namespace zuna_toolkit {

namespace {

ByteRange Moved(const ByteRange& range, std::size_t by) { return {range.begin + by, range.end + by}; }

void AddRanges(std::vector<ByteRange>& ranges, const std::vector<ByteRange>& others, std::size_t begin) {
  for (const ByteRange& range : others) ranges.push_back(Moved(range, begin));
}

/// The sum of what is known.
void AddKnown(std::optional<std::uint64_t>& sum, const std::optional<std::uint64_t>& number) {
  sum = sum && number ? std::optional(*sum + *number) : std::nullopt;
}

/// Adds what `other` tells, but for its songs, of the document at `begin`, which has lost its head `head`.
void AddReport(RescueReport& report, const RescueReport& other, std::size_t begin, const std::string& head) {
  AddKnown(report.stated_songs, other.stated_songs);
  AddKnown(report.known_songs, other.known_songs);
  AddRanges(report.framing, other.framing, begin);
  AddRanges(report.unread, other.unread, begin);
  report.changed = report.changed || other.changed;
  for (const std::string& remark : other.remarks) {
    report.remarks.push_back("in " + DocumentText(begin) + ": " + remark);
  }
  report.missing.push_back(head + " of " + DocumentText(begin));
  for (const std::string& missing : other.missing) {
    if (missing != head) report.missing.push_back(missing + " of " + DocumentText(begin));
  }
}

/// The songs of parts that are of this kind.
template <typename Kind>
Rescued MergedOf(std::vector<JoinedPart> parts) {
  const Document& first = parts.front().rescued.document;
  typename Kind::Model model = Kind::WithoutSongs(*first.As<typename Kind::Model>());
  RescueReport report = parts.front().rescued.report;
  report.songs.clear();
  std::vector<std::shared_ptr<typename Kind::Song>> songs;
  for (JoinedPart& part : parts) {
    const auto& own = Kind::Songs(*part.rescued.document.template As<typename Kind::Model>());
    for (RescuedSong& song : part.rescued.report.songs) {
      if (song.state != SongState::kLost) songs.push_back(own.at(song.number));
      if (song.offset) *song.offset += part.begin;
      if (song.end) *song.end += part.begin;
      report.songs.push_back(std::move(song));
    }
    if (part.begin > 0) AddReport(report, part.rescued.report, part.begin, Kind::kHead);
  }
  AddNumbered<Kind>(model, report, songs);
  return {Document(std::move(model), first.type().version, first.name()), std::move(report)};
}

}  // namespace

Rescued Merged(std::vector<JoinedPart> parts) {
  const bool is_log = parts.front().rescued.document.type().is_log();
  return is_log ? MergedOf<CurrentLogs>(std::move(parts)) : MergedOf<CurrentShows>(std::move(parts));
}

std::string DocumentText(std::size_t begin) {
  return "the document that begins at byte " + std::to_string(begin);
}

}  // namespace zuna_toolkit
