// The paired event record of the legacy formats: docs/format-0.md, "paired_event".

#include "format_converter/version0/records/paired_event.h"

#include <bit>
#include <istream>
#include <ostream>

#include "format_converter/version0/primitives/internal/primitives.h"
#include "format_converter/version0/primitives/internal/sequence.h"

namespace version0 {

namespace {

// Where the fields are in a record. Its frame is the event code and the payload length, which is not used.
constexpr std::size_t kPayload = 1 + 2;
constexpr std::size_t kStart = kPayload;
constexpr std::size_t kEnd = kStart + 4;
constexpr std::size_t kValue = kEnd + 4;

// After a short read an integer is -1, as a byte that is not there is elsewhere.
void take_value(std::istream& is, const std::uint8_t* bytes, signed char& value) {
  value = is.fail() ? std::int8_t{-1} : static_cast<signed char>(*bytes);
}
void set_value(std::uint8_t* bytes, signed char value) { *bytes = static_cast<std::uint8_t>(value); }

void take_value(std::istream&, const std::uint8_t* bytes, float& value) {
  value = std::bit_cast<float>(u32_in(bytes));
}
void set_value(std::uint8_t* bytes, float value) { set_u32_in(bytes, std::bit_cast<std::uint32_t>(value)); }

}  // namespace

template <typename Value, std::uint8_t Code>
const std::uint8_t PairedEvent<Value, Code>::eventCode;

template <typename Value, std::uint8_t Code>
PairedEvent<Value, Code>::PairedEvent(std::istream& is) {
  expect_event_code(is, eventCode);
  // The rest of the record, in which every place is one byte nearer.
  const auto bytes = get_bytes<kPayload - 1 + kPayloadLength>(is);
  start = u32_in(&bytes[kStart - 1]);
  end = u32_in(&bytes[kEnd - 1]);
  take_value(is, &bytes[kValue - 1], value);
}

template <typename Value, std::uint8_t Code>
void PairedEvent<Value, Code>::write_binary(std::ostream& os) const {
  std::array<std::uint8_t, kPayload + kPayloadLength> bytes{eventCode, kPayloadLength};
  set_u32_in(&bytes[kStart], start);
  set_u32_in(&bytes[kEnd], end);
  set_value(&bytes[kValue], value);
  put_bytes(os, bytes);
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
