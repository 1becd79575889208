// The key signature record of the legacy formats: docs/format-0.md, "r_key".

#include "format_converter/version0/records/r_key.h"

#include "format_converter/version0/primitives/internal/primitives.h"

namespace version0 {

const std::uint8_t RKey::eventCode;

RKey::RKey(std::istream& is)
    : event_code(get_u8(is)),
      length(get_u16(is)),
      time(get_u32(is)),
      key(static_cast<std::int8_t>(get_u8(is))),
      mode(get_u8(is)) {}

void RKey::write_binary(std::ostream& os) const {
  put_u8(os, eventCode);
  put_u16(os, kPayloadLength);
  put_u32(os, time);
  put_u8(os, static_cast<std::uint8_t>(key));
  put_u8(os, mode);
}

RKey::RKey(std::uint32_t new_time, std::int8_t new_key, std::uint8_t new_mode)
    : time(new_time), key(new_key), mode(new_mode) {}

bool operator==(const RKey& a, const RKey& b) {
  return a.time == b.time && a.key == b.key && a.mode == b.mode;
}
bool operator!=(const RKey& a, const RKey& b) { return !(a == b); }
bool operator<(const RKey& a, const RKey& b) { return a.time < b.time; }

}  // namespace version0
