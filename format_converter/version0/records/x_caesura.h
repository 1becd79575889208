#pragma once

// The caesura record of the legacy formats: docs/format-0.md, "x_caesura".

#include <cstdint>
#include <iosfwd>

#include "kit/api.h"

namespace version0 {

/// A caesura, in a song log.
struct ZUNA_API XCaesura {
  static const std::uint8_t eventCode = 'N';          ///< the first byte of a record
  static constexpr std::uint16_t kPayloadLength = 4;  ///< bytes of a record after its frame

  std::uint8_t event_code = eventCode;    ///< of the frame that was read; neither compared nor written
  std::uint16_t length = kPayloadLength;  ///< of the frame that was read; neither compared nor written
  std::uint32_t time;                     ///< ticks

  /// Reads what write_binary() writes.
  explicit XCaesura(std::istream& is);
  /// Sets the fields.
  explicit XCaesura(std::uint32_t new_time);

  /// Writes the record with its frame.
  void write_binary(std::ostream& os) const;

  /// Writes "XCaesura(480)", the time as a decimal number.
  std::ostream& write_string(std::ostream& os) const;
};

/// Equal in time. `<` compares the time alone.
///@{
ZUNA_API bool operator==(const XCaesura& a, const XCaesura& b);
ZUNA_API bool operator!=(const XCaesura& a, const XCaesura& b);
ZUNA_API bool operator<(const XCaesura& a, const XCaesura& b);
///@}

}  // namespace version0
