// Compares a legacy show with what comes back down of its current form.
#include <algorithm>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "toolkit/comparison/internal/compare_models.h"
#include "toolkit/comparison/internal/song_differences.h"
#include "toolkit/comparison/internal/timeline_entries.h"
#include "toolkit/internal/translate.h"
#include "toolkit/smf/file.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

using Events = std::vector<version0::EventObject>;

/// Tracks that share an id become one voice with the name of the last one.
void AddMergedTracks(const version0::SongData& song, const SongDifferences& differences) {
  std::map<std::uint8_t, std::vector<std::string>> names;
  for (const version0::TrackObject& track : song.tracks) names[track.track_id].push_back(track.track_name);
  for (const auto& [id, shared] : names) {
    if (shared.size() < 2) continue;
    Difference difference;
    difference.subject = Subject::kVoice;
    difference.action = Action::kMerged;
    difference.place.list = "voices";
    difference.place.voice = id;
    for (const std::string& name : shared) AppendListed(difference.before, '"' + name + '"');
    difference.after = '"' + shared.back() + '"';
    difference.count = shared.size();
    differences.Add(std::move(difference));
  }
}

/// The delta time that an event gets from the times of its track.
std::uint32_t ComputedDelta(const Events& events, std::size_t i) {
  return events[i].abs_time - (i == 0 ? 0 : events[i - 1].abs_time);
}

/// Events whose status holds a channel, which the track's id replaces, and whose delta times do not follow
/// from their times. One difference for each run of them.
void AddEventDifferences(std::uint8_t id, const Events& events, const SongDifferences& differences) {
  const auto add_runs = [&](Subject subject, auto differs, auto text_before, auto text_after) {
    for (std::size_t i = 0; i < events.size(); ++i) {
      if (!differs(i)) continue;
      Difference difference;
      difference.subject = subject;
      difference.place.list = "messages";
      difference.place.index = i;
      difference.place.tick = events[i].abs_time;
      difference.place.voice = id;
      difference.where = "track " + std::to_string(id);
      difference.before = text_before(i);
      difference.after = text_after(i);
      while (i + 1 < events.size() && differs(i + 1)) {
        ++difference.count;
        ++i;
      }
      differences.Add(std::move(difference));
    }
  };
  add_runs(
      Subject::kMessageChannel,
      [&](std::size_t i) { return (events[i].status_high & smf::kChannelMask) != 0; },
      [&](std::size_t i) { return "status " + std::to_string(events[i].status_high); },
      [&](std::size_t i) { return std::to_string(events[i].status_high & smf::kKindMask); });
  add_runs(
      Subject::kDeltaTime, [&](std::size_t i) { return events[i].delta_time != ComputedDelta(events, i); },
      [&](std::size_t i) { return std::to_string(events[i].delta_time); },
      [&](std::size_t i) { return std::to_string(ComputedDelta(events, i)); });
}

/// The timeline as it comes back down; nothing where it does not, because its meters are in disorder.
std::optional<version0::Timeline> TimelineBack(const zuna_midi::SongData& song) {
  try {
    return version0::Timeline(*song.timeline, song.song_number, song.song_length, song.division);
  } catch (const std::exception& error) {
    PassOnBadAlloc(error);
    return std::nullopt;
  }
}

void CompareTimelines(const version0::Timeline& before, const zuna_midi::SongData& song,
                      const SongDifferences& differences) {
  const std::optional<version0::Timeline> after = TimelineBack(song);
  if (!after) {
    Difference difference;
    difference.subject = Subject::kMeter;
    difference.action = Action::kReordered;
    difference.place.list = kMeterList.name;
    return differences.Add(std::move(difference));
  }
  differences.AddField(Subject::kTimelineName, before.name, after->name);
  differences.AddNumber(Subject::kTimelineLength, before.song_length, after->song_length);
  CompareTimelineLists(kBarLabelList, before.bars_beats, after->bars_beats, differences);
  CompareTimelineLists(kTempoList, before.tempos, after->tempos, differences);
  CompareTimelineLists(kKeyList, before.keys, after->keys, differences);
  CompareTimelineLists(kPageNumberList, before.page_nums, after->page_nums, differences);
  CompareTimelineLists(kMeterList, before.meters, after->meters, differences);
}

}  // namespace

void CompareWithDownAgain(const version0::ShowData& legacy, const zuna_midi::ShowData& current,
                          const DifferenceSink& sink) {
  for (const auto& [number, song] : legacy.songs) {
    const SongDifferences differences(number, sink);
    CompareTimelines(song.timeline, *current.songs().at(number), differences);
    AddMergedTracks(song, differences);
    for (const auto& [id, events] : song.events) AddEventDifferences(id, events, differences);
  }
}

}  // namespace zuna_toolkit
