#pragma once

// The time signature record of the legacy formats: docs/format-0.md, "r_meter".

#include <cstdint>
#include <iosfwd>

#include "kit/api.h"

namespace version0 {

/// A time signature. Its metronome click is in the tempo records.
struct ZUNA_API RMeter {
  static const std::uint8_t eventCode = 'J';                  ///< the first byte of a record
  static constexpr std::uint16_t kPayloadLength = 4 + 1 + 1;  ///< bytes of a record after its frame

  std::uint8_t event_code = eventCode;    ///< of the frame that was read; neither compared nor written
  std::uint16_t length = kPayloadLength;  ///< of the frame that was read; neither compared nor written
  std::uint32_t time;                     ///< ticks
  std::uint8_t numerator;                 ///< beats per bar
  std::uint8_t denominator;               ///< the note value of a beat: 4 for a quarter

  /// Reads what write_binary() writes.
  explicit RMeter(std::istream& is);
  /// Sets the fields.
  RMeter(std::uint32_t new_time, std::uint8_t new_numerator, std::uint8_t new_denominator);

  /// Writes the record with its frame.
  void write_binary(std::ostream& os) const;

  /// Writes "RMeter(1920, 3, 4)". The stream is left in decimal and without boolalpha.
  std::ostream& write_string(std::ostream& os) const;
};

/// Equal in time, numerator and denominator. `<` compares the time alone.
///@{
ZUNA_API bool operator==(const RMeter& a, const RMeter& b);
ZUNA_API bool operator!=(const RMeter& a, const RMeter& b);
ZUNA_API bool operator<(const RMeter& a, const RMeter& b);
///@}

}  // namespace version0
