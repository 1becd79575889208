// The tempo record of the legacy formats: docs/format-0.md, "r_tempo".

#include "format_converter/version0/records/r_tempo.h"

#include <cmath>

#include "format_converter/version0/primitives/internal/primitives.h"

namespace version0 {

const std::uint8_t RTempo::eventCode;

RTempo::RTempo(std::istream& is)
    : event_code(get_u8(is)),
      length(get_u16(is)),
      time(get_u32(is)),
      seconds_per_tick(get_float(is)),
      notated_32_per_click(get_u8(is)),
      notated_32_per_quarter(get_u8(is)),
      bpm(get_u16(is)) {}

void RTempo::write_binary(std::ostream& os) const {
  put_u8(os, eventCode);
  put_u16(os, kPayloadLength);
  put_u32(os, time);
  put_float(os, seconds_per_tick);
  put_u8(os, notated_32_per_click);
  put_u8(os, notated_32_per_quarter);
  put_u16(os, bpm);
}

RTempo::RTempo(std::uint32_t new_time, float new_seconds_per_tick, std::uint8_t new_notated_32_per_click,
               std::uint8_t new_notated_32_per_quarter, std::uint16_t new_bpm)
    : time(new_time),
      seconds_per_tick(new_seconds_per_tick),
      notated_32_per_click(new_notated_32_per_click),
      notated_32_per_quarter(new_notated_32_per_quarter),
      bpm(new_bpm) {}

std::uint8_t RTempo::clocks_per_click() const {
  if (notated_32_per_quarter == 0) return 0;
  const double quarters = static_cast<double>(notated_32_per_click) / notated_32_per_quarter;
  return static_cast<std::uint8_t>(round_half_away(quarters * 24.0));
}

std::int64_t RTempo::microseconds(unsigned short ticks) const {
  return round_half_away(static_cast<double>(seconds_per_tick) * (ticks * 1000000.0));
}

bool operator==(const RTempo& a, const RTempo& b) {
  constexpr float kTolerance = 1.1920929e-07F;
  return a.time == b.time && std::fabs(a.seconds_per_tick - b.seconds_per_tick) < kTolerance &&
         a.notated_32_per_click == b.notated_32_per_click &&
         a.notated_32_per_quarter == b.notated_32_per_quarter && a.bpm == b.bpm;
}

bool operator!=(const RTempo& a, const RTempo& b) { return !(a == b); }
bool operator<(const RTempo& a, const RTempo& b) { return a.time < b.time; }

}  // namespace version0
