#pragma once

#include <cstdint>
#include <iosfwd>

#include "kit/api.h"

namespace version0 {

/// A caesura, in a song log.
struct ZUNA_API XCaesura {
  static const std::uint8_t eventCode = 'N';          ///< the first byte of a record
  static constexpr std::uint16_t kPayloadLength = 4;  ///< bytes of a record behind its frame

  std::uint8_t event_code = eventCode;    ///< the frame as it was read: neither compared nor written
  std::uint16_t length = kPayloadLength;  ///< likewise
  std::uint32_t time;                     ///< ticks

  /// Reads what write_binary() writes.
  explicit XCaesura(std::istream& is);
  /// A record with these values.
  explicit XCaesura(std::uint32_t at);

  /// Writes the record with its frame.
  void write_binary(std::ostream& os) const;

  /// Writes "XCaesura(480)", the time as a decimal number.
  std::ostream& write_string(std::ostream& os) const;
};

/// Equal in time.
ZUNA_API bool operator==(const XCaesura& a, const XCaesura& b);
/// The opposite of operator==.
ZUNA_API bool operator!=(const XCaesura& a, const XCaesura& b);
/// By time alone.
ZUNA_API bool operator<(const XCaesura& a, const XCaesura& b);

}  // namespace version0
