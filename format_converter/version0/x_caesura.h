#pragma once

#include <cstdint>
#include <iosfwd>

#include "kit/api.h"

namespace version0 {

/// A caesura, in a song log.
struct ZUNA_API XCaesura {
  static const std::uint8_t eventCode = 'N';
  static constexpr std::uint16_t kPayloadLength = 4;

  std::uint8_t event_code = eventCode;    ///< the frame as it was read: neither compared nor written
  std::uint16_t length = kPayloadLength;  ///< likewise
  std::uint32_t time;                     ///< ticks

  explicit XCaesura(std::istream& is);
  explicit XCaesura(std::uint32_t at);

  void write_binary(std::ostream& os) const;

  /// Writes "XCaesura(480)", the time as a decimal number.
  std::ostream& write_string(std::ostream& os) const;
};

/// Equal in time.
ZUNA_API bool operator==(const XCaesura& a, const XCaesura& b);
ZUNA_API bool operator!=(const XCaesura& a, const XCaesura& b);
/// By time alone.
ZUNA_API bool operator<(const XCaesura& a, const XCaesura& b);

}  // namespace version0
