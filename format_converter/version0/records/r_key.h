#pragma once

#include <cstdint>
#include <iosfwd>

#include "kit/api.h"

namespace version0 {

/// A key signature.
struct ZUNA_API RKey {
  static const std::uint8_t eventCode = 'H';                  ///< the first byte of a record
  static constexpr std::uint16_t kPayloadLength = 4 + 1 + 1;  ///< bytes of a record behind its frame

  std::uint8_t event_code = eventCode;    ///< the frame as it was read: neither compared nor written
  std::uint16_t length = kPayloadLength;  ///< likewise
  std::uint32_t time;                     ///< ticks
  std::int8_t key;                        ///< sharps, or flats where negative
  std::uint8_t mode;                      ///< 0 is major, 1 minor

  /// Reads what write_binary() writes.
  explicit RKey(std::istream& is);
  /// A record with these values.
  RKey(std::uint32_t at, std::int8_t signature, std::uint8_t signature_mode);

  /// Writes the record with its frame.
  void write_binary(std::ostream& os) const;
};

/// Equal in time, key and mode.
ZUNA_API bool operator==(const RKey& a, const RKey& b);
/// The opposite of operator==.
ZUNA_API bool operator!=(const RKey& a, const RKey& b);
/// By time alone.
ZUNA_API bool operator<(const RKey& a, const RKey& b);

}  // namespace version0
