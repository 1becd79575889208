#pragma once

// The tempo record of the legacy formats: docs/format-0.md, "r_tempo".

#include <cstdint>
#include <iosfwd>

#include "kit/api.h"

namespace version0 {

/// A tempo, and the metronome click that goes with it. Times are ticks of the song's division.
struct ZUNA_API RTempo {
  static const std::uint8_t eventCode = 'F';                          ///< the first byte of a record
  static constexpr std::uint16_t kPayloadLength = 4 + 4 + 1 + 1 + 2;  ///< bytes of a record after its frame

  std::uint8_t event_code = eventCode;    ///< of the frame that was read; neither compared nor written
  std::uint16_t length = kPayloadLength;  ///< of the frame that was read; neither compared nor written
  std::uint32_t time;                     ///< ticks
  float seconds_per_tick;                 ///< the duration of a tick
  std::uint8_t notated_32_per_click;      ///< notated 32nd notes in one metronome click
  std::uint8_t notated_32_per_quarter;    ///< notated 32nd notes in a quarter note of 24 clocks
  std::uint16_t bpm;                      ///< whole clicks per minute

  /// Reads what write_binary() writes.
  explicit RTempo(std::istream& is);
  /// Sets the fields.
  RTempo(std::uint32_t new_time, float new_seconds_per_tick, std::uint8_t new_notated_32_per_click,
         std::uint8_t new_notated_32_per_quarter, std::uint16_t new_bpm);

  /// Writes the record with its frame.
  void write_binary(std::ostream& os) const;

  /// Clocks of 24 to the quarter note in one click, modulo 256; 0 where notated_32_per_quarter is 0.
  std::uint8_t clocks_per_click() const;

  /// The duration of `ticks` ticks in microseconds, rounded half away from zero; 0 where 64 bits cannot hold
  /// it.
  std::int64_t microseconds(unsigned short ticks) const;
};

/// Equal in all fields but the frame; seconds_per_tick may differ by less than 2^-23. `<`
/// compares the time alone.
///@{
ZUNA_API bool operator==(const RTempo& a, const RTempo& b);
ZUNA_API bool operator!=(const RTempo& a, const RTempo& b);
ZUNA_API bool operator<(const RTempo& a, const RTempo& b);
///@}

}  // namespace version0
