// Numbers in the bytes of an input.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz {

/// The little-endian number of `size` bytes at `at`, which must be within the bytes.
inline std::uint32_t NumberAt(const std::string& bytes, std::size_t at, std::size_t size) {
  std::uint32_t number = 0;
  for (std::size_t i = size; i-- > 0;) number = number << 8U | static_cast<std::uint8_t>(bytes[at + i]);
  return number;
}

/// Puts a little-endian number there.
inline void PutNumber(std::string& bytes, std::size_t at, std::size_t size, std::size_t number) {
  for (std::size_t i = 0; i < size; ++i) bytes[at + i] = static_cast<char>(number >> 8U * i);
}

/// Puts a big-endian number there.
inline void PutBigEndian(std::string& bytes, std::size_t at, std::size_t size, std::size_t number) {
  for (std::size_t i = 0; i < size; ++i) bytes[at + size - 1 - i] = static_cast<char>(number >> 8U * i);
}

}  // namespace fuzz
