// The checksum of binary files (docs/format-1.md).

#include "platform/core/bytes/coding.h"

#include <libdeflate.h>

namespace zuna_core {

std::uint32_t Crc32(std::uint32_t crc, std::string_view bytes) {
  return libdeflate_crc32(crc, bytes.data(), bytes.size());
}

}  // namespace zuna_core
