// The head of a song of a damaged legacy show: its fields before its events (docs/format-0.md, "song_data").
#include "toolkit/rescue/internal/legacy_head.h"

#include <algorithm>

#include "format_converter/version0/containers/timeline.h"
#include "toolkit/rescue/internal/legacy_events.h"

namespace zuna_toolkit {

namespace {

using namespace std::string_view_literals;

constexpr std::size_t kRecordLengthSize = 4;  // of the record, at the beginning
constexpr std::size_t kEventCountSize = 4;    // of the events
constexpr std::size_t kDivisionSize = 2;      // before the song length
constexpr std::size_t kSongTicksSize = 4;
constexpr std::size_t kMostOfTexts = 512;  // of number and name with their lengths
constexpr std::string_view kNoDivision = "\0\0"sv;
constexpr std::string_view kNoLength = "\0\0\0\0"sv;
constexpr std::string_view kNoTracks = "\0"sv;

/// Tracks with their count before them; none where `in` has anything else.
std::string_view ReadTracks(RecordCursor& in, Steps& steps) {
  const std::size_t begin = in.at();
  for (std::uint32_t left = in.Number(1); left > 0 && in.ok() && steps.Take(); --left) {
    in.Take(1);  // id
    in.Text();
  }
  return in.From(begin);
}

/// The song length that the timeline at `timeline` repeats.
std::string_view LengthInTimeline(std::string_view bytes, std::size_t timeline) {
  RecordCursor in(bytes, timeline + version0::kTimelineMagic.size());
  in.Text();
  const std::string_view length = in.Take(kSongTicksSize);
  return in.ok() ? length : kNoLength;
}

/// How many events are before the timeline: as many as their count says, or else as can be read.
std::size_t CountEvents(std::string_view before, bool& is_counted) {
  const std::size_t most = CountEventsBack(before);
  for (std::size_t count = most; count > 0; --count) {
    const std::size_t events = before.size() - count * kEventSize;
    is_counted =
        events >= kEventCountSize && RecordCursor(before, events - kEventCountSize).Number(4) == count;
    if (is_counted) return count;
  }
  return most;
}

/// The tracks that end at `end` and have all of `voices`; empty where there are none.
std::string_view FindTracks(std::string_view bytes, std::size_t begin, std::size_t end,
                            std::string_view voices, Steps& steps) {
  for (std::size_t at = begin; at < end && steps.Take(); ++at) {
    if (bytes[at] == 0) continue;
    RecordCursor in(bytes.substr(0, end), at);
    const std::string_view tracks = ReadTracks(in, steps);
    if (!in.ok() || in.at() != end) continue;
    const std::string ids = VoicesOf(tracks);
    const auto has = [&ids](char voice) { return ids.find(voice) != std::string::npos; };
    if (std::all_of(voices.begin(), voices.end(), has)) return tracks;
  }
  return "";
}

/// The voices of events.
std::string VoicesOfEvents(std::string_view events) {
  std::string voices;
  for (std::size_t last = kEventSize; last <= events.size(); last += kEventSize) {
    if (voices.find(events[last - 1]) == std::string::npos) voices += events[last - 1];
  }
  return voices;
}

/// Takes number and name, which are between `begin` and `end`, if they can be read. What is before them may
/// be another song, whose number this song does not get.
void TakeTexts(SongHead& head, std::string_view bytes, std::size_t begin, std::size_t end) {
  RecordCursor in(bytes.substr(0, end), begin);
  const std::string_view number = in.Text();
  const bool has_number = in.ok() && IsNumber(number);
  const std::size_t after_number = in.at();
  const std::string_view name = in.Text();
  if (has_number && in.ok() && in.at() == end) {
    head.number = number;
    head.name = name;
    head.unread = {};
    return;
  }
  for (std::size_t at = begin; at < end && head.name.empty(); ++at) {  // the number may be what is damaged
    RecordCursor text(bytes.substr(0, end), at);
    const std::string_view found = text.Text();
    if (!text.ok() || text.at() != end || !IsNumber(found)) continue;
    head.name = found;
    head.unread.end = at;
  }
  if (has_number && head.name.empty() && end - begin <= kMostOfTexts) {
    head.number = number;
    head.unread.begin = after_number;
  }
}

/// Takes the fields before the events, which reach up to the end of `bytes`, as far as tracks tell their
/// places.
void TakeFieldsBefore(SongHead& head, std::string_view bytes, std::size_t begin, Steps& steps) {
  const std::size_t end = head.events - kEventCountSize;
  const std::string_view tracks =
      FindTracks(bytes, begin, end, VoicesOfEvents(bytes.substr(head.events)), steps);
  if (tracks.empty()) return;
  head.tracks = tracks;
  head.unread.end = end - tracks.size();
  const std::size_t texts = begin + kRecordLengthSize;
  const std::size_t after_texts = end - tracks.size() - kDivisionSize - kSongTicksSize;
  if (end < texts + tracks.size() + kDivisionSize + kSongTicksSize) return;
  TakeTexts(head, bytes, texts, after_texts);
  if (head.name.empty() && bytes[after_texts] == 0) return;  // what is zero before it may reach into it
  head.unread.end = std::min<std::uint64_t>(head.unread.end, after_texts);
  head.division = bytes.substr(after_texts, kDivisionSize);
  if (head.length == kNoLength) head.length = bytes.substr(after_texts + kDivisionSize, kSongTicksSize);
}

}  // namespace

std::size_t EndOfStatedEvents(const SongHead& head) { return head.events + head.stated_events * kEventSize; }

bool StatesItsLength(const SongHead& head, std::size_t begin) {
  return begin + kRecordLengthSize + head.record_length == EndOfStatedEvents(head);
}

SongHead ReadSongHead(RecordCursor& in, Steps& steps) {
  SongHead head;
  head.record_length = in.Number(kRecordLengthSize);
  head.number = in.Text();
  head.name = in.Text();
  head.division = in.Take(kDivisionSize);
  head.length = in.Take(kSongTicksSize);
  head.tracks = ReadTracks(in, steps);
  head.stated_events = in.Number(kEventCountSize);
  head.events = in.at();
  return head;
}

std::optional<SongHead> FindSongHead(std::string_view bytes, std::size_t begin, std::size_t timeline,
                                     Steps& steps) {
  bool is_counted = false;
  SongHead head;
  head.division = kNoDivision;
  head.length = LengthInTimeline(bytes, timeline);
  head.tracks = kNoTracks;
  head.stated_events = CountEvents(bytes.substr(begin, timeline - begin), is_counted);
  if (head.stated_events == 0) return std::nullopt;
  head.events = timeline - head.stated_events * kEventSize;
  head.unread = {begin, head.events};
  if (is_counted) {
    head.unread.end -= kEventCountSize;
    TakeFieldsBefore(head, bytes.substr(0, timeline), begin, steps);
  } else {
    head.missing.emplace_back("the count of its events is missing");
  }
  if (head.number.empty()) head.missing.emplace_back("its number is missing");
  if (head.name.empty()) head.missing.emplace_back("its name is missing");
  if (head.division == kNoDivision) head.missing.emplace_back("its division is missing");
  return head;
}

}  // namespace zuna_toolkit
