#pragma once

// Reads and writes the events of a legacy song: docs/format-0.md, "song_data".

#include <iosfwd>

#include "format_converter/version0/records/event_object.h"

namespace version0 {

/// Reads the event count (4 bytes) and that many events, and appends each to the list of its track. Stops
/// when the stream fails.
EventMap read_events(std::istream& is);

/// Writes the count and the events, grouped by ascending track id.
/// Throws std::out_of_range ("vector") when there are none, after the count has been written.
void write_events(std::ostream& os, const EventMap& events);

}  // namespace version0
