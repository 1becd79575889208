// What can be read of a damaged song of a legacy show (docs/format-0.md, "song_data").
#include "toolkit/rescue/internal/mended_song.h"

#include <algorithm>
#include <utility>

#include "toolkit/rescue/internal/legacy_events.h"
#include "toolkit/rescue/internal/legacy_head.h"
#include "toolkit/rescue/internal/mended_sequences.h"
#include "toolkit/rescue/internal/record_bytes.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kEventsThatTell = 8;      // that a file without any timeline is a show
constexpr std::size_t kRoomForOtherBytes = 48;  // among the events; more may be the beginning of another song

/// The events of a damaged song, and where its timeline is.
struct SongParts {
  MendedEvents events = {};
  std::size_t timeline = 0;
  std::string problem = {};  ///< where no song can be made of them
};

SongParts FindParts(std::string_view bytes, const SongHead& head, bool is_show) {
  const std::size_t stated_end = EndOfStatedEvents(head);
  if (HasTimelineAt(bytes, stated_end)) {
    return {{std::string(bytes.substr(head.events, stated_end - head.events)), stated_end, {}}, stated_end};
  }
  const std::size_t found = bytes.find(version0::kTimelineMagic, head.events);
  const bool has_magic = found != std::string_view::npos;
  const std::size_t timeline = has_magic ? found : std::min(stated_end, bytes.size());
  const std::string voices = VoicesOf(head.tracks);
  if (has_magic) {  // where nothing but the count is damaged, the events reach up to the timeline
    MendedEvents all = MendEvents(bytes.substr(0, timeline), head.events, voices, bytes.size());
    if (all.end == timeline && all.unread.empty() && !all.bytes.empty()) return {std::move(all), timeline};
  }
  const std::size_t end = std::min(timeline, stated_end + kRoomForOtherBytes);
  MendedEvents events = MendEvents(bytes.substr(0, end), head.events, voices, head.stated_events);
  if (has_magic && events.bytes.empty()) return {.problem = "its events cannot be told from its beginning"};
  if (!is_show && events.bytes.size() / kEventSize < kEventsThatTell) {
    return {.problem = "nothing tells that it is a song"};
  }
  const bool is_own = timeline <= std::max(events.end, stated_end) + kRoomForOtherBytes;
  const std::size_t where = is_own ? timeline : events.end;
  return {std::move(events), where};
}

/// A timeline whose lengths are right.
struct MendedTimeline {
  std::string bytes;
  MendedSequences lists;
};

/// Takes what can be read of the timeline at `at`, before the next one. Where its beginning is damaged, its
/// length is that of the song.
MendedTimeline MendTimeline(std::string_view bytes, std::size_t at, std::string_view song_length) {
  bytes = bytes.substr(0, bytes.find(version0::kTimelineMagic, at + version0::kTimelineMagic.size()));
  const std::size_t after_magic = std::min(at + version0::kTimelineMagic.size(), bytes.size());
  RecordCursor in(bytes, after_magic);
  std::string name = TextBytes(in.Text());
  std::string length(in.Take(4));
  const std::size_t stated_size = in.Number(4);
  const std::size_t lists = in.at();
  const bool is_readable = in.ok() && StartAt(bytes, lists, TimelineSequences());
  MendedTimeline timeline;
  const std::size_t unnamed = HasTimelineAt(bytes, at) ? after_magic : std::min(at, bytes.size());
  timeline.lists = MendSequences(bytes, is_readable ? lists : unnamed, bytes.size(), TimelineSequences(),
                                 is_readable ? stated_size : 0);
  if (!is_readable) {
    name = TextBytes("");
    length = song_length;
    timeline.lists.remarks.insert(timeline.lists.remarks.begin(), "the beginning of its timeline is missing");
  }
  timeline.bytes = std::string(version0::kTimelineMagic) + name + length +
                   WordBytes(timeline.lists.bytes.size()) + timeline.lists.bytes;
  return timeline;
}

}  // namespace

MendedSong MendSong(std::string_view bytes, std::size_t begin, bool is_show) {
  RecordCursor in(bytes, begin);
  Steps steps(bytes.size() - begin);
  SongHead head = ReadSongHead(in, steps);
  MendedSong song;
  song.told = {std::string(head.number), std::string(head.name), begin, bytes.size()};
  SongParts parts{.problem = "its beginning cannot be read"};
  if (in.ok()) parts = FindParts(bytes, head, is_show);
  const bool has_none = head.number.empty() && StatesItsLength(head, begin);  // as its writer wrote it
  const bool is_wrong = !parts.problem.empty() || (!IsNumber(head.number) && !has_none);
  const std::size_t magic = bytes.find(version0::kTimelineMagic, begin);
  if (is_show && magic != std::string_view::npos && is_wrong) {
    if (auto found = FindSongHead(bytes, begin, magic, steps)) {
      head = std::move(*found);
      parts = FindParts(bytes, head, is_show);
    }
  }
  song.problem = parts.problem;
  if (!song.problem.empty()) return song;

  std::vector<std::string>& remarks = song.told.remarks;
  remarks = head.missing;
  const std::size_t events = parts.events.bytes.size() / kEventSize;
  if (events != head.stated_events) {
    remarks.push_back("has " + std::to_string(events) + " of the " + std::to_string(head.stated_events) +
                      " events that it states");
  } else if (!parts.events.unread.empty()) {
    remarks.emplace_back("there are other bytes between its events");
  } else if (parts.events.end < parts.timeline) {
    remarks.emplace_back("there are other bytes after its events");
  }
  const MendedTimeline timeline = MendTimeline(bytes, parts.timeline, head.length);
  const MendedSequences& lists = timeline.lists;
  remarks.insert(remarks.end(), lists.remarks.begin(), lists.remarks.end());
  const bool has_timeline = lists.end > parts.timeline;
  song.told.end = has_timeline ? lists.end : parts.events.end;
  if (has_timeline) song.unread = lists.unread;
  if (head.unread.begin < head.unread.end) song.unread.push_back(head.unread);
  song.unread.insert(song.unread.end(), parts.events.unread.begin(), parts.events.unread.end());
  if (has_timeline && parts.events.end < parts.timeline) {
    song.unread.push_back({parts.events.end, parts.timeline});
  }
  song.bytes = WordBytes(0) + TextBytes(head.number) + TextBytes(head.name) + std::string(head.division) +
               std::string(head.length) + std::string(head.tracks) + WordBytes(events) + parts.events.bytes +
               timeline.bytes;
  return song;
}

}  // namespace zuna_toolkit
