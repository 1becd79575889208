#pragma once

#include <cmath>
#include <cstdint>

namespace version0 {

/// `value` truncated toward zero; 0 for what is not a number or does not fit.
inline std::int64_t truncate(double value) {
  constexpr double kLimit = 9223372036854775808.0;  // 2^63
  return value >= -kLimit && value < kLimit ? static_cast<std::int64_t>(value) : 0;
}

/// `value` rounded half away from zero. The addend is the largest double below one half: with one half
/// itself, 0.49999999999999994 would round up.
inline std::int64_t round_half_away(double value) {
  return truncate(value + std::copysign(0.49999999999999994, value));
}

}  // namespace version0
