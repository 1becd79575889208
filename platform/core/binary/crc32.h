#pragma once

#include <cstdint>
#include <string_view>

namespace zuna_core {

/// The CRC-32 of zlib and Ethernet (reflected polynomial 0xEDB88320) of `bytes`, which follow those that gave
/// `crc`; begins with 0.
std::uint32_t Crc32(std::uint32_t crc, std::string_view bytes);

}  // namespace zuna_core
