// Memory that holds secrets. Not part of the contract with the converter.

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace kit {

/// Overwrites memory with zeros, even where the compiler sees that it is not read again.
inline void Wipe(std::span<std::uint8_t> memory) {
  // Called through a volatile pointer, which the compiler cannot see through: the write has to happen.
  static void* (*const volatile overwrite)(void*, int, std::size_t) = std::memset;
  if (!memory.empty()) overwrite(memory.data(), 0, memory.size());
}

}  // namespace kit
