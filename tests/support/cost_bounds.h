// What an input may cost: the bounds that the tests of costs and the fuzz targets hold the product to.

#pragma once

#include <cstddef>

namespace zuna_test {

/// So many bytes whatever the input, and so many for each byte of it.
struct CostBound {
  std::size_t constant;
  std::size_t factor;

  constexpr std::size_t For(std::size_t input_size) const { return constant + factor * input_size; }
};

/// Heap memory of a reader or a conversion.
inline constexpr CostBound kHeapBound{std::size_t{1} << 20, 64};

/// Heap memory of a command: reading, conversion, report, writing.
inline constexpr CostBound kCommandHeapBound{std::size_t{1} << 20, 128};

/// What is printed.
inline constexpr CostBound kPrintedBound{std::size_t{4} << 10, 64};

constexpr std::size_t HeapBound(std::size_t input_size) { return kHeapBound.For(input_size); }
constexpr std::size_t CommandHeapBound(std::size_t input_size) { return kCommandHeapBound.For(input_size); }
constexpr std::size_t PrintedBound(std::size_t input_size) { return kPrintedBound.For(input_size); }

}  // namespace zuna_test
