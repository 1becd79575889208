// Mutations that keep the structure of an input.

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

/// libFuzzer's own mutation. Returns the new size.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);

/// What libFuzzer calls instead where a target defines it. Returns the new size.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max_size,
                                               unsigned seed);

namespace fuzz {

/// A JSON text with one value or member of it repeated, left out, or replaced by another one, so that it
/// stays JSON. A text in which no value is found stays as it is.
std::string MutateJson(const std::string& text, std::mt19937& random);

/// Puts `bytes` back where libFuzzer reads them: up to `max_size` of them. Returns their size.
inline std::size_t PutBack(const std::string& bytes, std::uint8_t* data, std::size_t max_size) {
  const std::size_t size = std::min(bytes.size(), max_size);
  std::copy_n(bytes.begin(), size, data);
  return size;
}

}  // namespace fuzz
