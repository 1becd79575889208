#pragma once

#include <cstdint>
#include <iosfwd>

#include "kit/api.h"

namespace version0 {

/// A tempo, and the metronome click that goes with it. Times are ticks of the song's division.
struct ZUNA_API RTempo {
  static const std::uint8_t eventCode = 'F';                          ///< the first byte of a record
  static constexpr std::uint16_t kPayloadLength = 4 + 4 + 1 + 1 + 2;  ///< bytes of a record behind its frame

  std::uint8_t event_code = eventCode;    ///< the frame as it was read: neither compared nor written
  std::uint16_t length = kPayloadLength;  ///< likewise
  std::uint32_t time;                     ///< ticks
  float seconds_per_tick;                 ///< the length of a tick
  std::uint8_t notated_32_per_click;      ///< notated 32nd notes in one metronome click
  std::uint8_t notated_32_per_quarter;    ///< notated 32nd notes in a quarter note of 24 clocks
  std::uint16_t bpm;                      ///< whole clicks a minute

  /// Reads what write_binary() writes.
  explicit RTempo(std::istream& is);
  /// A record with these values.
  RTempo(std::uint32_t at, float seconds, std::uint8_t per_click, std::uint8_t per_quarter,
         std::uint16_t clicks_per_minute);

  /// Writes the record with its frame.
  void write_binary(std::ostream& os) const;

  /// Clocks of 24 to the quarter note in one click, modulo 256; 0 where notated_32_per_quarter is 0.
  std::uint8_t clocks_per_click() const;

  /// The length of `ticks` ticks in microseconds, rounded half away from zero; 0 where that is no number.
  std::int64_t microseconds(unsigned short ticks) const;
};

/// Tempos are equal when everything but the frame is; seconds_per_tick may differ by less than 2^-23.
ZUNA_API bool operator==(const RTempo& a, const RTempo& b);
/// The opposite of operator==.
ZUNA_API bool operator!=(const RTempo& a, const RTempo& b);
/// By time alone.
ZUNA_API bool operator<(const RTempo& a, const RTempo& b);

}  // namespace version0
