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

/// What changes in an event, and how.
struct EventField {
  Subject subject;
  Action action;
  const char* name;  ///< with a blank, before the value; or empty
};

/// How a field of an event changes.
struct ValueChange {
  std::uint32_t before = 0;
  std::uint32_t after = 0;

  bool operator==(const ValueChange&) const = default;
};

/// Adds one difference for each run of events whose field changes in one way. `change(i)` has the two values
/// of an event; where they are the same, nothing changes.
template <typename Change>
void AddEventRuns(std::uint8_t track, const std::vector<version0::EventObject>& events,
                  const EventField& field, Change change, const SongDifferences& differences) {
  std::size_t end = 0;
  for (std::size_t i = 0; i < events.size(); i = end) {
    const ValueChange values = change(i);
    end = i + 1;
    if (values.before == values.after) continue;
    while (end < events.size() && change(end) == values) ++end;
    Difference difference;
    difference.subject = field.subject;
    difference.action = field.action;
    difference.place.list = "messages";
    difference.place.index = i;
    difference.place.tick = events[i].abs_time;
    difference.place.voice = track;
    difference.where = "track " + std::to_string(track);
    difference.count = end - i;
    difference.before = field.name + std::to_string(values.before);
    difference.after = std::to_string(values.after);
    differences.Add(std::move(difference));
  }
}

}  // namespace zuna_toolkit
