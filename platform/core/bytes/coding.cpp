// The checksum of binary files (docs/format-1.md).

#include "platform/core/bytes/coding.h"

#include <zlib.h>

namespace zuna_core {

std::uint32_t Crc32(std::uint32_t crc, std::string_view bytes) {
  return static_cast<std::uint32_t>(
      crc32_z(crc, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()));
}

}  // namespace zuna_core
