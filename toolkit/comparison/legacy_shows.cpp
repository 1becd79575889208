// Compares a legacy show with what comes back down of its current form.
#include <algorithm>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "toolkit/comparison/internal/compare_models.h"
#include "toolkit/comparison/internal/event_runs.h"
#include "toolkit/comparison/internal/legacy_songs.h"
#include "toolkit/comparison/internal/song_differences.h"
#include "toolkit/comparison/internal/timeline_entries.h"
#include "toolkit/smf/file.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

using Events = std::vector<version0::EventObject>;
using Messages = decltype(zuna_midi::VoiceTrack::messages);

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

/// Voices are in the order of their numbers, which are the ids of the tracks.
void AddTrackOrder(const version0::SongData& song, const SongDifferences& differences) {
  std::set<std::uint8_t> ids;
  std::vector<std::uint8_t> in_order;
  for (const version0::TrackObject& track : song.tracks) {
    if (ids.insert(track.track_id).second) in_order.push_back(track.track_id);
  }
  if (std::is_sorted(in_order.begin(), in_order.end())) return;
  AddVoiceOrder(in_order, ids, differences);
}

/// Compares the events of one track with the messages of its voice.
class EventComparison {
 public:
  EventComparison(std::uint8_t id, const Events& events, const Messages& messages,
                  const SongDifferences& differences)
      : id_(id), events_(events), messages_(messages), differences_(differences) {}

  /// The low nibble of the track's id joins the status. A status with a channel besides becomes another one.
  void CompareStatus() const {
    const auto change = [&](std::size_t i) {
      const std::uint8_t status = events_[i].status_high;
      return ValueChange{status, (status & smf::kChannelMask) != 0 ? Status(i) : status};
    };
    AddEventRuns(id_, events_, {Subject::kMessageChannel, Action::kRenumbered, "status "}, change,
                 differences_);
  }

  /// Delta times are not kept. They come back from the times of the events.
  void CompareDeltaTimes() const {
    const auto change = [&](std::size_t i) {
      return ValueChange{events_[i].delta_time, ComputedDelta(events_, i)};
    };
    AddEventRuns(id_, events_, {Subject::kDeltaTime, Action::kDefaulted, ""}, change, differences_);
  }

 private:
  unsigned Status(std::size_t i) const { return messages_[i].second.status; }

  std::uint8_t id_;
  const Events& events_;
  const Messages& messages_;
  const SongDifferences& differences_;
};

void CompareEvents(const version0::SongData& song, const zuna_midi::VoiceData& voices,
                   const SongDifferences& differences) {
  for (const auto& [id, events] : song.events) {
    if (events.empty()) continue;
    const auto voice = voices.tracks().find(id);
    if (voice == voices.tracks().end() || voice->second->messages.size() != events.size()) {
      ThrowNotOneDocument(song.song_number);
    }
    const EventComparison comparison(id, events, voice->second->messages, differences);
    comparison.CompareStatus();
    comparison.CompareDeltaTimes();
  }
}

/// What is the same in both forms but for its width, as it comes back down.
void ComparePlainLists(const version0::Timeline& before, const TL::Timeline& current,
                       const SongDifferences& differences) {
  version0::Timeline after;
  for (const TL::BarsBeats& label : current.bars_beats) {
    after.bars_beats.emplace_back(label.time, label.bar_number(), label.tag);
  }
  for (const TL::Key& key : current.keys) {
    after.keys.emplace_back(key.time, static_cast<std::int8_t>(key.key), static_cast<std::uint8_t>(key.mode));
  }
  for (const TL::PageNumber& page : current.page_numbers) {
    after.page_nums.emplace_back(page.time, static_cast<std::uint16_t>(page.page));
  }
  CompareTimelineLists(kBarLabelList, before.bars_beats, after.bars_beats, differences);
  CompareTimelineLists(kKeyList, before.keys, after.keys, differences);
  CompareTimelineLists(kPageNumberList, before.page_nums, after.page_nums, differences);
}

/// Whether every meter has the tempos from its own time up to the next meter. Such a timeline that came up
/// comes down again: its first meter is at a tempo.
bool IsInOrder(const TL::Timeline& timeline) {
  const auto not_after = [](const TL::Meter& a, const TL::Meter& b) { return a.time >= b.time; };
  const auto earlier = [](const TL::Tempo& a, const TL::Tempo& b) { return a.time < b.time; };
  const auto& meters = timeline.meters;
  return std::adjacent_find(meters.begin(), meters.end(), not_after) == meters.end() &&
         std::is_sorted(timeline.tempos.begin(), timeline.tempos.end(), earlier);
}

/// Tempos and meters as far as both forms have them: times, microseconds and signatures.
void CompareTemposAsTheyAre(const version0::Timeline& before, const zuna_midi::SongData& song,
                            const SongDifferences& differences) {
  std::vector<TL::Tempo> tempos;
  for (const version0::RTempo& tempo : before.tempos) {
    tempos.push_back({tempo.time, static_cast<std::uint32_t>(tempo.microseconds(song.division))});
  }
  std::vector<version0::RMeter> meters;
  for (const TL::Meter& meter : song.timeline->meters) {
    meters.emplace_back(meter.time, meter.numerator, meter.denominator);
  }
  CompareTimelineLists(kTempoList, tempos, song.timeline->tempos, differences);
  CompareTimelineLists(kMeterList, before.meters, meters, differences);
}

void CompareTimelines(const version0::Timeline& before, const zuna_midi::SongData& song,
                      const SongDifferences& differences) {
  differences.AddDefaulted(Subject::kTimelineName, before.name, song.song_number);
  differences.AddDefaulted(Subject::kTimelineLength, std::to_string(before.song_length),
                           std::to_string(song.song_length));
  ComparePlainLists(before, *song.timeline, differences);
  // Meters in disorder cannot always come down again.
  if (!IsInOrder(*song.timeline)) return CompareTemposAsTheyAre(before, song, differences);
  const version0::Timeline after(*song.timeline, song.song_number, song.song_length, song.division);
  CompareTimelineLists(kTempoList, before.tempos, after.tempos, differences);
  CompareTimelineLists(kMeterList, before.meters, after.meters, differences);
}

}  // namespace

void CompareWithDownAgain(const version0::ShowData& legacy, const zuna_midi::ShowData& current,
                          const DifferenceSink& sink) {
  for (const auto& [number, song] : legacy.songs) {
    SongDifferences differences(number, sink, Purpose::kLosses);
    differences.SetBars(BarLabels(song.timeline));
    const auto found = current.songs().find(number);
    if (found == current.songs().end()) ThrowNotOneDocument(number);
    CompareTimelines(song.timeline, *found->second, differences);
    AddTrackOrder(song, differences);
    AddMergedTracks(song, differences);
    CompareEvents(song, *found->second->voice_data, differences);
  }
}

}  // namespace zuna_toolkit
