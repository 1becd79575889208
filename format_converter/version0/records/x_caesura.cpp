// The caesura record of the legacy formats: docs/format-0.md, "x_caesura".

#include "format_converter/version0/records/x_caesura.h"

#include <ostream>
#include <string>

#include "format_converter/version0/primitives/internal/primitives.h"

namespace version0 {

const std::uint8_t XCaesura::eventCode;

XCaesura::XCaesura(std::istream& is) : event_code(get_u8(is)), length(get_u16(is)), time(get_u32(is)) {}

void XCaesura::write_binary(std::ostream& os) const {
  put_u8(os, eventCode);
  put_u16(os, kPayloadLength);
  put_u32(os, time);
}

XCaesura::XCaesura(std::uint32_t new_time) : time(new_time) {}

std::ostream& XCaesura::write_string(std::ostream& os) const {
  return os << "XCaesura(" << std::to_string(time) << ")";
}

bool operator==(const XCaesura& a, const XCaesura& b) { return a.time == b.time; }
bool operator!=(const XCaesura& a, const XCaesura& b) { return !(a == b); }
bool operator<(const XCaesura& a, const XCaesura& b) { return a.time < b.time; }

}  // namespace version0
