#pragma once

// The key signature record of the legacy formats: docs/format-0.md, "r_key".

#include <cstdint>
#include <iosfwd>

#include "kit/api.h"

namespace version0 {

/// A key signature.
struct ZUNA_API RKey {
  static const std::uint8_t eventCode = 'H';                  ///< the first byte of a record
  static constexpr std::uint16_t kPayloadLength = 4 + 1 + 1;  ///< bytes of a record after its frame

  std::uint8_t event_code = eventCode;    ///< of the frame that was read; neither compared nor written
  std::uint16_t length = kPayloadLength;  ///< of the frame that was read; neither compared nor written
  std::uint32_t time;                     ///< ticks
  std::int8_t key;                        ///< sharps, or flats where negative
  std::uint8_t mode;                      ///< 0 is major, 1 minor

  /// Reads what write_binary() writes.
  explicit RKey(std::istream& is);
  /// Sets the fields.
  RKey(std::uint32_t new_time, std::int8_t new_key, std::uint8_t new_mode);

  /// Writes the record with its frame.
  void write_binary(std::ostream& os) const;
};

/// Equal in time, key and mode. `<` compares the time alone.
///@{
ZUNA_API bool operator==(const RKey& a, const RKey& b);
ZUNA_API bool operator!=(const RKey& a, const RKey& b);
ZUNA_API bool operator<(const RKey& a, const RKey& b);
///@}

}  // namespace version0
