// Prints a song log of a legacy change log.

#include <algorithm>
#include <cstdint>
#include <limits>
#include <ostream>

#include "codes/zuna_event_codes.h"
#include "format_converter/version0/containers/song_log.h"
#include "format_converter/version0/primitives/internal/primitives.h"

namespace version0 {

namespace {

void write_tabs(std::ostream& os, int count) {
  os << std::string(static_cast<std::size_t>(std::max(count, 0)), '\t');
}

/// A value as it is printed: a signed 16-bit number.
std::int16_t shown_value(signed char value) { return value; }

/// Truncated to a 32-bit integer, of which the low 16 bits are kept; 0 where 32 bits cannot hold it.
std::int16_t shown_value(float value) {
  using Whole = std::numeric_limits<std::int32_t>;
  const std::int64_t whole = truncated(static_cast<double>(value));
  if (whole < Whole::min() || whole > Whole::max()) return 0;
  return static_cast<std::int16_t>(whole);
}

template <typename Value, std::uint8_t Code>
void write_event(std::ostream& os, const PairedEvent<Value, Code>& event) {
  os << codes::editNameByZunaEventCode.at(Code) << "(" << std::to_string(event.start) << ", "
     << std::to_string(event.end) << ", " << std::to_string(shown_value(event.value)) << ")";
}
void write_event(std::ostream& os, const XCaesura& event) { event.write_string(os); }
void write_event(std::ostream& os, const XScoreMarker& event) { event.write_string(os); }

/// A line with the number of events, then a line for each.
template <typename Event>
void write_block(std::ostream& os, int indent, const std::vector<Event>& events) {
  write_tabs(os, indent);
  os << codes::editNameByZunaEventCode.at(Event::eventCode)
     << "Sequence(evt_count=" << std::to_string(events.size()) << "):" << std::endl;
  for (const Event& event : events) {
    write_tabs(os, indent + 1);
    write_event(os, event);
    os << std::endl;
  }
}

}  // namespace

std::ostream& SongLogV0::write_string(std::ostream& os) const {
  return os << "SongLogV0(songNumber_=" << songNumber_ << ", songName_=" << songName_
            << ", songLength_=" << std::to_string(songLength_) << ")";
}

void SongLogV0::write_string_detailed(std::ostream& os, int indent) const {
  write_tabs(os, indent);
  write_string(os) << std::endl;
  write_block(os, indent + 1, vamps);
  write_block(os, indent + 1, repeats);
  write_block(os, indent + 1, cuts);
  write_block(os, indent + 1, transposes);
  write_block(os, indent + 1, tempo_scales);
  write_block(os, indent + 1, score_markers);
  write_block(os, indent + 1, clicks);
  write_block(os, indent + 1, caesuras);
}

}  // namespace version0
