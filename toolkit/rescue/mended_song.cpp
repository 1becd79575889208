// What can be read of a damaged song of a legacy show (docs/format-0.md, "song_data").
#include <algorithm>
#include <utility>

#include "toolkit/rescue/internal/legacy_song.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kEventsThatTell = 8;  // that a file without any timeline is a show

bool HasTimelineAt(std::string_view bytes, std::size_t at) {
  return at < bytes.size() && bytes.substr(at).starts_with(kTimelineMagic);
}

/// Where the timeline of a damaged song is, and how many events are before it.
struct SongParts {
  std::size_t events = 0;
  std::size_t timeline = 0;
  std::string problem = {};  ///< where no song can be made of them
};

SongParts FindParts(std::string_view bytes, const SongHead& head, bool is_show) {
  const std::size_t stated_end = head.events + head.stated_events * kEventSize;
  std::size_t timeline = stated_end;
  if (!HasTimelineAt(bytes, stated_end)) timeline = bytes.find(kTimelineMagic, head.events);
  const bool has_magic = timeline != std::string_view::npos;
  if (!has_magic) timeline = std::min(stated_end, bytes.size());
  const std::size_t events = (timeline - head.events) / kEventSize;
  if (has_magic && timeline != head.events + events * kEventSize) {
    return {.problem = "its events cannot be told from its beginning"};
  }
  if (timeline == stated_end && has_magic) return {events, timeline};
  const std::size_t plausible =
      CountPlausibleEvents(bytes.substr(head.events, events * kEventSize), head.tracks);
  if (!is_show && plausible < kEventsThatTell) return {.problem = "nothing tells that it is a song"};
  return {has_magic ? events : plausible, timeline};
}

/// A timeline whose lengths are right.
struct MendedTimeline {
  std::string bytes;
  MendedSequences lists;
};

/// Takes what can be read of the timeline at `at`. Where its beginning is damaged, its length is that of the
/// song.
MendedTimeline MendTimeline(std::string_view bytes, std::size_t at, std::string_view song_length) {
  RecordCursor in(bytes, std::min(at + kTimelineMagic.size(), bytes.size()));
  std::string name = TextBytes(in.Text());
  std::string length(in.Take(4));
  in.Take(4);  // of the body
  const std::size_t lists = in.at();
  const bool is_readable = in.ok() && BeginsSequence(bytes, lists, TimelineSequences());
  MendedTimeline timeline;
  timeline.lists = MendSequences(bytes, is_readable ? lists : std::min(at, bytes.size()), bytes.size(),
                                 TimelineSequences());
  if (!is_readable) {
    name = TextBytes("");
    length = song_length;
    timeline.lists.remarks.insert(timeline.lists.remarks.begin(), "the beginning of its timeline is missing");
  }
  timeline.bytes = std::string(kTimelineMagic) + name + length + WordBytes(timeline.lists.bytes.size()) +
                   timeline.lists.bytes;
  return timeline;
}

}  // namespace

SongHead ReadSongHead(RecordCursor& in, Steps& steps) {
  SongHead head;
  in.Number(4);  // record length
  head.number = in.Text();
  head.name = in.Text();
  head.division = in.Take(2);
  head.length = in.Take(4);
  const std::size_t tracks = in.at();
  for (std::uint32_t left = in.Number(1); left > 0 && in.ok() && steps.Take(); --left) {
    in.Take(1);  // id
    in.Text();
  }
  head.tracks = in.From(tracks);
  head.stated_events = in.Number(4);
  head.events = in.at();
  return head;
}

MendedSong MendSong(std::string_view bytes, std::size_t begin, bool is_show) {
  RecordCursor in(bytes, begin);
  Steps steps(bytes.size() - begin);
  const SongHead head = ReadSongHead(in, steps);
  MendedSong song;
  song.told = {std::string(head.number), std::string(head.name), begin, bytes.size()};
  song.problem = "its beginning cannot be read";
  if (!in.ok()) return song;
  const SongParts parts = FindParts(bytes, head, is_show);
  song.problem = parts.problem;
  if (!song.problem.empty()) return song;

  std::vector<std::string>& remarks = song.told.remarks;
  if (parts.events != head.stated_events) {
    remarks.push_back("has " + std::to_string(parts.events) + " of the " +
                      std::to_string(head.stated_events) + " events that it states");
  }
  const MendedTimeline timeline = MendTimeline(bytes, parts.timeline, head.length);
  const MendedSequences& lists = timeline.lists;
  remarks.insert(remarks.end(), lists.remarks.begin(), lists.remarks.end());
  const std::size_t events_end = head.events + parts.events * kEventSize;
  const bool has_timeline = lists.end > parts.timeline;
  song.told.end = has_timeline ? lists.end : events_end;
  if (has_timeline) song.unread = lists.unread;
  if (has_timeline && events_end < parts.timeline) song.unread.push_back({events_end, parts.timeline});
  song.bytes = WordBytes(0) + TextBytes(head.number) + TextBytes(head.name) + std::string(head.division) +
               std::string(head.length) + std::string(head.tracks) + WordBytes(parts.events) +
               std::string(bytes.substr(head.events, parts.events * kEventSize)) + timeline.bytes;
  return song;
}

}  // namespace zuna_toolkit
