// The bar label record of the legacy formats: docs/format-0.md, "r_bars_beats".

#include "format_converter/version0/records/r_bars_beats.h"

#include "format_converter/version0/primitives/internal/primitives.h"

namespace version0 {

const std::uint8_t RBarsBeats::eventCode;

RBarsBeats::RBarsBeats(std::istream& is)
    : event_code(get_u8(is)),
      length(get_u16(is)),
      time(get_u32(is)),
      label(get_string(is)),
      tag(get_u8(is)) {}

void RBarsBeats::write_binary(std::ostream& os) const {
  put_u8(os, eventCode);
  put_u16(os, static_cast<std::uint16_t>(kFixedLength + label.size()));
  put_u32(os, time);
  put_string(os, label);
  put_u8(os, tag);
}

RBarsBeats::RBarsBeats(std::uint32_t new_time, const std::string& new_label, std::uint8_t new_tag)
    : length(static_cast<std::uint16_t>(kFixedLength + new_label.size())),
      time(new_time),
      label(new_label),
      tag(new_tag) {}

bool operator==(const RBarsBeats& a, const RBarsBeats& b) {
  return a.time == b.time && a.label == b.label && a.tag == b.tag;
}

bool operator!=(const RBarsBeats& a, const RBarsBeats& b) { return !(a == b); }
bool operator<(const RBarsBeats& a, const RBarsBeats& b) { return a.time < b.time; }

}  // namespace version0
