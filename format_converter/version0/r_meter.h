#pragma once

#include <cstdint>
#include <iosfwd>

#include "kit/api.h"

namespace version0 {

/// A time signature. Its metronome click stands in the tempo records.
struct ZUNA_API RMeter {
  static const std::uint8_t eventCode = 'J';
  static constexpr std::uint16_t kPayloadLength = 4 + 1 + 1;

  std::uint8_t event_code = eventCode;    ///< the frame as it was read: neither compared nor written
  std::uint16_t length = kPayloadLength;  ///< likewise
  std::uint32_t time;                     ///< ticks
  std::uint8_t numerator;
  std::uint8_t denominator;

  explicit RMeter(std::istream& is);
  RMeter(std::uint32_t at, std::uint8_t beats, std::uint8_t note);

  void write_binary(std::ostream& os) const;

  /// Writes "RMeter(1920, 3, 4)". The stream is left in decimal and without boolalpha.
  std::ostream& write_string(std::ostream& os) const;
};

/// Equal in time, numerator and denominator.
ZUNA_API bool operator==(const RMeter& a, const RMeter& b);
ZUNA_API bool operator!=(const RMeter& a, const RMeter& b);
/// By time alone.
ZUNA_API bool operator<(const RMeter& a, const RMeter& b);

}  // namespace version0
