#pragma once

// The score marker record of the legacy formats: docs/format-0.md, "x_score_marker".

#include <cstdint>
#include <iosfwd>
#include <string>

#include "kit/api.h"

namespace version0 {

/// A text above the score, in a song log. Its record has no frame.
struct ZUNA_API XScoreMarker {
  static const std::uint8_t eventCode = 'E';  ///< of the sequence that holds the records

  std::uint32_t time;  ///< ticks
  std::string text;    ///< at most 255 bytes

  /// Reads what write_binary() writes.
  explicit XScoreMarker(std::istream& is);
  /// Sets the fields.
  XScoreMarker(std::uint32_t new_time, const std::string& new_text);

  /// Throws std::length_error after the time for a text of 256 bytes or more.
  void write_binary(std::ostream& os) const;

  /// Writes "XScoreMarker(480, text)", the time as a decimal number.
  std::ostream& write_string(std::ostream& os) const;
};

/// Equal in time and text. `<` compares the time alone.
///@{
ZUNA_API bool operator==(const XScoreMarker& a, const XScoreMarker& b);
ZUNA_API bool operator!=(const XScoreMarker& a, const XScoreMarker& b);
ZUNA_API bool operator<(const XScoreMarker& a, const XScoreMarker& b);
///@}

}  // namespace version0
