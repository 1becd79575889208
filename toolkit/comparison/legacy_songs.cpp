// Compares two legacy songs in what they hold besides their current forms.
#include "toolkit/comparison/internal/legacy_songs.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "toolkit/comparison/internal/event_runs.h"
#include "toolkit/comparison/internal/timeline_entries.h"
#include "toolkit/smf/file.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

using Events = std::vector<version0::EventObject>;

/// The ids of the tracks that the other song has too, each once, in the order of the file.
std::vector<std::uint8_t> SharedIds(const version0::SongData& song, const version0::SongData& other) {
  std::set<std::uint8_t> left;
  for (const version0::TrackObject& track : other.tracks) left.insert(track.track_id);
  std::vector<std::uint8_t> ids;
  for (const version0::TrackObject& track : song.tracks) {
    if (left.erase(track.track_id) != 0) ids.push_back(track.track_id);
  }
  return ids;
}

void CompareTrackOrder(const version0::SongData& before, const version0::SongData& after,
                       const SongDifferences& differences) {
  const std::vector<std::uint8_t> ids = SharedIds(before, after);
  const std::vector<std::uint8_t> after_ids = SharedIds(after, before);
  if (ids != after_ids) AddVoiceOrder(ids, after_ids, differences);
}

/// Whether two events of one track are the same but for a channel in the status and the delta time. The
/// channel of a message is that of its track.
bool SameMessage(const version0::EventObject& a, const version0::EventObject& b) {
  const auto status = [](const version0::EventObject& event) {
    return static_cast<unsigned>(event.status_high) | (event.track_id & smf::kChannelMask);
  };
  return a.abs_time == b.abs_time && status(a) == status(b) && a.data1 == b.data1 && a.data2 == b.data2;
}

void CompareEvents(std::uint8_t track, const Events& before, const Events& after,
                   const SongDifferences& differences) {
  if (!std::equal(before.begin(), before.end(), after.begin(), after.end(), SameMessage)) return;
  const auto add = [&](Subject subject, const char* name, auto value) {
    AddEventRuns(
        track, before, {subject, Action::kChanged, name},
        [&](std::size_t i) {
          return ValueChange{value(before[i]), value(after[i])};
        },
        differences);
  };
  add(Subject::kMessageChannel, "status ",
      [](const version0::EventObject& event) { return event.status_high; });
  add(Subject::kDeltaTime, "", [](const version0::EventObject& event) { return event.delta_time; });
}

}  // namespace

void CompareLegacyTimelines(const version0::Timeline& before, const version0::Timeline& after,
                            const SongDifferences& differences) {
  differences.AddField(Subject::kTimelineName, before.name, after.name);
  differences.AddNumber(Subject::kTimelineLength, before.song_length, after.song_length);
  CompareTimelineLists(kTempoList, before.tempos, after.tempos, differences);
  CompareTimelineLists(kBarLabelList, before.bars_beats, after.bars_beats, differences);
  CompareTimelineLists(kKeyList, before.keys, after.keys, differences);
  CompareTimelineLists(kPageNumberList, before.page_nums, after.page_nums, differences);
  CompareTimelineLists(kMeterList, before.meters, after.meters, differences);
}

void CompareLegacyTracks(const version0::SongData& before, const version0::SongData& after,
                         const SongDifferences& differences) {
  CompareTrackOrder(before, after, differences);
  for (const auto& [track, events] : before.events) {
    const auto found = after.events.find(track);
    if (found != after.events.end()) CompareEvents(track, events, found->second, differences);
  }
}

}  // namespace zuna_toolkit
