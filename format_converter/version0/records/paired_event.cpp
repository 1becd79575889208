// The paired event record of the legacy formats: docs/format-0.md, "paired_event".

#include "format_converter/version0/records/paired_event.h"

#include <istream>
#include <ostream>

#include "format_converter/version0/primitives/internal/primitives.h"
#include "format_converter/version0/primitives/internal/sequence.h"

namespace version0 {

namespace {

void get_value(std::istream& is, signed char& value) { value = static_cast<signed char>(get_u8(is)); }
void put_value(std::ostream& os, signed char value) { put_u8(os, static_cast<std::uint8_t>(value)); }

void get_value(std::istream& is, float& value) { value = get_float(is); }
void put_value(std::ostream& os, float value) { put_float(os, value); }

}  // namespace

template <typename Value, std::uint8_t Code>
const std::uint8_t PairedEvent<Value, Code>::eventCode;

template <typename Value, std::uint8_t Code>
PairedEvent<Value, Code>::PairedEvent(std::istream& is) {
  expect_event_code(is, eventCode);
  get_u16(is);  // the payload length, which is not used
  start = get_u32(is);
  end = get_u32(is);
  get_value(is, value);
}

template <typename Value, std::uint8_t Code>
void PairedEvent<Value, Code>::write_binary(std::ostream& os) const {
  put_u8(os, eventCode);
  put_u16(os, kPayloadLength);
  put_u32(os, start);
  put_u32(os, end);
  put_value(os, value);
}

template <typename Value, std::uint8_t Code>
PairedEvent<Value, Code>::PairedEvent(std::uint32_t new_start, std::uint32_t new_end, Value new_value)
    : start(new_start), end(new_end), value(new_value) {}

template struct PairedEvent<signed char, '@'>;
template struct PairedEvent<signed char, 'A'>;
template struct PairedEvent<signed char, 'B'>;
template struct PairedEvent<signed char, 'C'>;
template struct PairedEvent<float, 'D'>;
template struct PairedEvent<signed char, 'L'>;

}  // namespace version0
