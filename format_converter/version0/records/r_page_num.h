#pragma once

#include <cstdint>
#include <iosfwd>

#include "kit/api.h"

namespace version0 {

/// A page of the score that begins at `time`.
struct ZUNA_API RPageNum {
  static const std::uint8_t eventCode = 'I';              ///< the first byte of a record
  static constexpr std::uint16_t kPayloadLength = 4 + 2;  ///< bytes of a record behind its frame

  std::uint8_t event_code = eventCode;    ///< the frame as it was read: neither compared nor written
  std::uint16_t length = kPayloadLength;  ///< likewise
  std::uint32_t time;                     ///< ticks
  std::uint16_t page;                     ///< the number of the page

  /// Reads what write_binary() writes.
  explicit RPageNum(std::istream& is);
  /// A record with these values.
  RPageNum(std::uint32_t at, std::uint16_t number);

  /// Writes the record with its frame.
  void write_binary(std::ostream& os) const;
};

/// Equal in time and page.
ZUNA_API bool operator==(const RPageNum& a, const RPageNum& b);
/// The opposite of operator==.
ZUNA_API bool operator!=(const RPageNum& a, const RPageNum& b);
/// By time alone.
ZUNA_API bool operator<(const RPageNum& a, const RPageNum& b);

}  // namespace version0
