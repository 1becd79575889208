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

/// Takes number and name, which are between `begin` and `end`, if they can be read.
void TakeTexts(SongHead& head, std::string_view bytes, std::size_t begin, std::size_t end) {
  RecordCursor in(bytes.substr(0, end), begin);
  const std::string_view number = in.Text();
  if (in.ok() && IsNumber(number)) head.number = number;
  const std::string_view name = in.Text();
  if (!head.number.empty() && in.ok() && in.at() == end) {
    head.name = name;
    return;
  }
  for (; begin < end && head.name.empty(); ++begin) {  // the number is damaged, and the name may not be
    RecordCursor text(bytes.substr(0, end), begin);
    const std::string_view found = text.Text();
    if (text.ok() && text.at() == end && IsNumber(found)) head.name = found;
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
  const std::size_t texts = begin + kRecordLengthSize;
  const std::size_t after_texts = end - tracks.size() - kDivisionSize - kSongTicksSize;
  if (end < texts + tracks.size() + kDivisionSize + kSongTicksSize) return;
  TakeTexts(head, bytes, texts, after_texts);
  if (head.name.empty() && bytes[after_texts] == 0) return;  // what is zero before it may reach into it
  head.division = bytes.substr(after_texts, kDivisionSize);
  if (head.length == kNoLength) head.length = bytes.substr(after_texts + kDivisionSize, kSongTicksSize);
}

}  // namespace

SongHead ReadSongHead(RecordCursor& in, Steps& steps) {
  SongHead head;
  in.Number(kRecordLengthSize);
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
  SongHead head{"", "", kNoDivision, LengthInTimeline(bytes, timeline), kNoTracks, 0, 0, {}};
  head.stated_events = CountEvents(bytes.substr(begin, timeline - begin), is_counted);
  if (head.stated_events == 0) return std::nullopt;
  head.events = timeline - head.stated_events * kEventSize;
  if (is_counted) {
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
