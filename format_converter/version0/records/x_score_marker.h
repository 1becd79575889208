#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include "kit/api.h"

namespace version0 {

/// A text over the score, in a song log. Its record has no frame of its own.
struct ZUNA_API XScoreMarker {
  static const std::uint8_t eventCode = 'E';  ///< of the sequence that holds the records

  std::uint32_t time;  ///< ticks
  std::string text;    ///< at most 255 bytes

  /// Reads what write_binary() writes.
  explicit XScoreMarker(std::istream& is);
  /// A record with these values.
  XScoreMarker(std::uint32_t at, const std::string& marker_text);

  /// Throws std::length_error after the time for a text of 256 bytes or more.
  void write_binary(std::ostream& os) const;

  /// Writes "XScoreMarker(480, text)", the time as a decimal number.
  std::ostream& write_string(std::ostream& os) const;
};

/// Equal in time and text.
ZUNA_API bool operator==(const XScoreMarker& a, const XScoreMarker& b);
/// The opposite of operator==.
ZUNA_API bool operator!=(const XScoreMarker& a, const XScoreMarker& b);
/// By time alone.
ZUNA_API bool operator<(const XScoreMarker& a, const XScoreMarker& b);

}  // namespace version0
