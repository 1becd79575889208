#pragma once

// The page number record of the legacy formats: docs/format-0.md, "r_page_num".

#include <cstdint>
#include <iosfwd>

#include "kit/api.h"

namespace version0 {

/// A page of the score that begins at `time`.
struct ZUNA_API RPageNum {
  static const std::uint8_t eventCode = 'I';              ///< the first byte of a record
  static constexpr std::uint16_t kPayloadLength = 4 + 2;  ///< bytes of a record after its frame

  std::uint8_t event_code = eventCode;    ///< of the frame that was read; neither compared nor written
  std::uint16_t length = kPayloadLength;  ///< of the frame that was read; neither compared nor written
  std::uint32_t time;                     ///< ticks
  std::uint16_t page;                     ///< the number of the page

  /// Reads what write_binary() writes.
  explicit RPageNum(std::istream& is);
  /// Sets the fields.
  RPageNum(std::uint32_t new_time, std::uint16_t new_page);

  /// Writes the record with its frame.
  void write_binary(std::ostream& os) const;
};

/// Equal in time and page. `<` compares the time alone.
///@{
ZUNA_API bool operator==(const RPageNum& a, const RPageNum& b);
ZUNA_API bool operator!=(const RPageNum& a, const RPageNum& b);
ZUNA_API bool operator<(const RPageNum& a, const RPageNum& b);
///@}

}  // namespace version0
