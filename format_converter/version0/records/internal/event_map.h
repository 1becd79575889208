#pragma once

#include <iosfwd>

#include "format_converter/version0/records/event_object.h"

namespace version0 {

/// Reads the event count (4 bytes) and that many events, and hands each to its track. Stops when the stream
/// fails.
EventMap read_events(std::istream& is);

/// Writes the count and the events, grouped by ascending track id.
/// Throws std::out_of_range ("vector") when there are none; the count has been written then.
void write_events(std::ostream& os, const EventMap& events);

}  // namespace version0
