// The page number record of the legacy formats: docs/format-0.md, "r_page_num".

#include "format_converter/version0/records/r_page_num.h"

#include "format_converter/version0/primitives/internal/primitives.h"

namespace version0 {

const std::uint8_t RPageNum::eventCode;

RPageNum::RPageNum(std::istream& is)
    : event_code(get_u8(is)), length(get_u16(is)), time(get_u32(is)), page(get_u16(is)) {}

void RPageNum::write_binary(std::ostream& os) const {
  put_u8(os, eventCode);
  put_u16(os, kPayloadLength);
  put_u32(os, time);
  put_u16(os, page);
}

RPageNum::RPageNum(std::uint32_t new_time, std::uint16_t new_page) : time(new_time), page(new_page) {}

bool operator==(const RPageNum& a, const RPageNum& b) { return a.time == b.time && a.page == b.page; }
bool operator!=(const RPageNum& a, const RPageNum& b) { return !(a == b); }
bool operator<(const RPageNum& a, const RPageNum& b) { return a.time < b.time; }

}  // namespace version0
