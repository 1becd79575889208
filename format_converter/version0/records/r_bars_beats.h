#pragma once

// The bar label record of the legacy formats: docs/format-0.md, "r_bars_beats".

#include <cstdint>
#include <iosfwd>
#include <string>

#include "kit/api.h"

namespace version0 {

/// The label of a bar or beat.
struct ZUNA_API RBarsBeats {
  static const std::uint8_t eventCode = 'G';                ///< the first byte of a record
  static constexpr std::uint16_t kFixedLength = 4 + 1 + 1;  ///< bytes of the payload without the label's text

  std::uint8_t event_code = eventCode;  ///< of the frame that was read; neither compared nor written
  std::uint16_t length = kFixedLength;  ///< of the frame that was read; neither compared nor written
  std::uint32_t time;                   ///< ticks
  std::string label;                    ///< at most 255 bytes
  std::uint8_t tag;                     ///< carried unchanged

  /// Reads what write_binary() writes.
  explicit RBarsBeats(std::istream& is);
  /// Sets the fields.
  RBarsBeats(std::uint32_t new_time, const std::string& new_label, std::uint8_t new_tag);

  /// Throws std::length_error after code, length and time for a label of 256 bytes or more.
  void write_binary(std::ostream& os) const;
};

/// Equal in time, label and tag. `<` compares the time alone.
///@{
ZUNA_API bool operator==(const RBarsBeats& a, const RBarsBeats& b);
ZUNA_API bool operator!=(const RBarsBeats& a, const RBarsBeats& b);
ZUNA_API bool operator<(const RBarsBeats& a, const RBarsBeats& b);
///@}

}  // namespace version0
