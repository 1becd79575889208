// The time signature record of the legacy formats: docs/format-0.md, "r_meter".

#include "format_converter/version0/records/r_meter.h"

#include <ostream>

#include "format_converter/version0/primitives/internal/primitives.h"

namespace version0 {

const std::uint8_t RMeter::eventCode;

RMeter::RMeter(std::istream& is)
    : event_code(get_u8(is)),
      length(get_u16(is)),
      time(get_u32(is)),
      numerator(get_u8(is)),
      denominator(get_u8(is)) {}

void RMeter::write_binary(std::ostream& os) const {
  put_u8(os, eventCode);
  put_u16(os, kPayloadLength);
  put_u32(os, time);
  put_u8(os, numerator);
  put_u8(os, denominator);
}

RMeter::RMeter(std::uint32_t new_time, std::uint8_t new_numerator, std::uint8_t new_denominator)
    : time(new_time), numerator(new_numerator), denominator(new_denominator) {}

std::ostream& RMeter::write_string(std::ostream& os) const {
  return os << std::dec << std::noboolalpha << "RMeter(" << time << ", " << unsigned{numerator} << ", "
            << unsigned{denominator} << ")";
}

bool operator==(const RMeter& a, const RMeter& b) {
  return a.time == b.time && a.numerator == b.numerator && a.denominator == b.denominator;
}

bool operator!=(const RMeter& a, const RMeter& b) { return !(a == b); }
bool operator<(const RMeter& a, const RMeter& b) { return a.time < b.time; }

}  // namespace version0
