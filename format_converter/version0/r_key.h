#pragma once

#include <cstdint>
#include <iosfwd>

#include "kit/api.h"

namespace version0 {

/// A key signature.
struct ZUNA_API RKey {
  static const std::uint8_t eventCode = 'H';
  static constexpr std::uint16_t kPayloadLength = 4 + 1 + 1;

  std::uint8_t event_code = eventCode;    ///< the frame as it was read: neither compared nor written
  std::uint16_t length = kPayloadLength;  ///< likewise
  std::uint32_t time;                     ///< ticks
  std::int8_t key;
  std::uint8_t mode;

  explicit RKey(std::istream& is);
  RKey(std::uint32_t at, std::int8_t signature, std::uint8_t signature_mode);

  void write_binary(std::ostream& os) const;
};

/// Equal in time, key and mode.
ZUNA_API bool operator==(const RKey& a, const RKey& b);
ZUNA_API bool operator!=(const RKey& a, const RKey& b);
/// By time alone.
ZUNA_API bool operator<(const RKey& a, const RKey& b);

}  // namespace version0
