// The score marker record of the legacy formats: docs/format-0.md, "x_score_marker".

#include "format_converter/version0/records/x_score_marker.h"

#include <ostream>

#include "format_converter/version0/primitives/internal/primitives.h"

namespace version0 {

const std::uint8_t XScoreMarker::eventCode;

XScoreMarker::XScoreMarker(std::istream& is) : time(get_u32(is)), text(get_string(is)) {}

void XScoreMarker::write_binary(std::ostream& os) const {
  put_u32(os, time);
  put_string(os, text);
}

XScoreMarker::XScoreMarker(std::uint32_t new_time, const std::string& new_text)
    : time(new_time), text(new_text) {}

std::ostream& XScoreMarker::write_string(std::ostream& os) const {
  return os << "XScoreMarker(" << std::to_string(time) << ", " << text << ")";
}

bool operator==(const XScoreMarker& a, const XScoreMarker& b) { return a.time == b.time && a.text == b.text; }
bool operator!=(const XScoreMarker& a, const XScoreMarker& b) { return !(a == b); }
bool operator<(const XScoreMarker& a, const XScoreMarker& b) { return a.time < b.time; }

}  // namespace version0
