#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include "kit/api.h"

namespace version0 {

/// The label of a bar or beat.
struct ZUNA_API RBarsBeats {
  static const std::uint8_t eventCode = 'G';                ///< the first byte of a record
  static constexpr std::uint16_t kFixedLength = 4 + 1 + 1;  ///< of the payload, without the label's bytes

  std::uint8_t event_code = eventCode;  ///< the frame as it was read: neither compared nor written
  std::uint16_t length = kFixedLength;  ///< likewise
  std::uint32_t time;                   ///< ticks
  std::string label;                    ///< at most 255 bytes
  std::uint8_t tag;                     ///< carried unchanged

  /// Reads what write_binary() writes.
  explicit RBarsBeats(std::istream& is);
  /// A record with these values.
  RBarsBeats(std::uint32_t at, const std::string& text, std::uint8_t mark);

  /// Throws std::length_error after code, length and time for a label of 256 bytes or more.
  void write_binary(std::ostream& os) const;
};

/// Equal in time, label and tag.
ZUNA_API bool operator==(const RBarsBeats& a, const RBarsBeats& b);
/// The opposite of operator==.
ZUNA_API bool operator!=(const RBarsBeats& a, const RBarsBeats& b);
/// By time alone.
ZUNA_API bool operator<(const RBarsBeats& a, const RBarsBeats& b);

}  // namespace version0
