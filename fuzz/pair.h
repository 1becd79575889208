// Inputs that hold two files.

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "fuzz/mend/mend.h"

namespace fuzz {

/// The two files of an input: the length of the first one (2 bytes, the low one first), and both. They are
/// mended, because a mutation of such an input cannot mend them.
inline std::pair<std::string, std::string> PairOf(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return {};
  const std::size_t stated = data[0] + (std::size_t{data[1]} << 8U);
  const std::size_t length = std::min(stated, size - 2);
  const std::uint8_t* first = data + 2;
  return {Mend(std::string(first, first + length)), Mend(std::string(first + length, data + size))};
}

/// The input for two files; the first one has less than 64 KiB.
inline std::string PairInput(const std::string& first, const std::string& second) {
  return std::string{static_cast<char>(first.size()), static_cast<char>(first.size() >> 8U)} + first + second;
}

}  // namespace fuzz
