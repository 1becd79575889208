#pragma once

// The paired event record of the legacy formats: docs/format-0.md, "paired_event".

#include <cstdint>
#include <iosfwd>

#include "kit/api.h"

namespace version0 {

/// An edit of a song log with a start, an end and a value.
template <typename Value, std::uint8_t Code>
struct PairedEvent {
  static const std::uint8_t eventCode = Code;  ///< the first byte of a record
  static constexpr std::uint16_t kPayloadLength =
      4 + 4 + sizeof(Value);  ///< bytes of a record after its frame

  std::uint8_t event_code = Code;  ///< always eventCode
  std::uint32_t start;             ///< ticks
  std::uint32_t end;               ///< ticks
  Value value;                     ///< an integer, or the factor of a tempo scale

  /// Reads what write_binary() writes. Throws EventCodeError for a record with another event code.
  explicit PairedEvent(std::istream& is);
  /// Sets the fields.
  PairedEvent(std::uint32_t new_start, std::uint32_t new_end, Value new_value);

  /// Writes the record with its frame.
  void write_binary(std::ostream& os) const;
};

/// The edits by kind. Only the tempo scale has a float.
///@{
using VampV0 = PairedEvent<signed char, '@'>;
using RepeatV0 = PairedEvent<signed char, 'A'>;
using CutV0 = PairedEvent<signed char, 'B'>;
using TransposeV0 = PairedEvent<signed char, 'C'>;
using TempoScaleV0 = PairedEvent<float, 'D'>;
using ClickV0 = PairedEvent<signed char, 'L'>;
///@}

extern template struct ZUNA_API PairedEvent<signed char, '@'>;
extern template struct ZUNA_API PairedEvent<signed char, 'A'>;
extern template struct ZUNA_API PairedEvent<signed char, 'B'>;
extern template struct ZUNA_API PairedEvent<signed char, 'C'>;
extern template struct ZUNA_API PairedEvent<float, 'D'>;
extern template struct ZUNA_API PairedEvent<signed char, 'L'>;

}  // namespace version0
