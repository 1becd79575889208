// Differences of the events of a legacy track.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "format_converter/version0/records/event_object.h"
#include "toolkit/comparison/internal/song_differences.h"

namespace zuna_toolkit {

/// The time between an event and the one before it, as their times since the start tell.
inline std::uint32_t ComputedDelta(const std::vector<version0::EventObject>& events, std::size_t i) {
  return i == 0 ? events[i].abs_time : events[i].abs_time - events[i - 1].abs_time;
}

/// Adds one difference for each run of events for which `differs(i)` holds: a copy of `kind` with their place
/// and with the texts that `add_texts(i, difference)` sets for the first of them.
template <typename Differs, typename AddTexts>
void AddEventRuns(std::uint8_t track, const std::vector<version0::EventObject>& events,
                  const Difference& kind, Differs differs, AddTexts add_texts,
                  const SongDifferences& differences) {
  std::size_t i = 0;
  while (i < events.size()) {
    std::size_t end = i;
    while (end < events.size() && differs(end)) ++end;
    if (end > i) {
      Difference difference = kind;
      difference.place.list = "messages";
      difference.place.index = i;
      difference.place.tick = events[i].abs_time;
      difference.place.voice = track;
      difference.where = "track " + std::to_string(track);
      difference.count = end - i;
      add_texts(i, difference);
      differences.Add(std::move(difference));
    }
    i = end + 1;
  }
}

/// A difference of which nothing but its kind is known.
inline Difference KindOf(Subject subject, Action action) {
  Difference kind;
  kind.subject = subject;
  kind.action = action;
  return kind;
}

}  // namespace zuna_toolkit
