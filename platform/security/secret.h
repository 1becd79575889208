// Memory that holds secrets, and what is done with it.

#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "kit/wipe.h"

namespace zuna_security {

using Bytes = std::span<const std::uint8_t>;
using MutableBytes = std::span<std::uint8_t>;

using kit::Wipe;

/// Copies all of `from` to the beginning of `to`.
inline void Copy(Bytes from, MutableBytes to) { std::copy(from.begin(), from.end(), to.begin()); }

/// Whether two secrets are the same, in a time that depends on their lengths only.
inline bool EqualInConstantTime(Bytes a, Bytes b) {
  if (a.size() != b.size()) return false;
  volatile std::uint8_t difference = 0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    difference = static_cast<std::uint8_t>(difference | (a[i] ^ b[i]));
  }
  return difference == 0;
}

/// `N` bytes that are wiped when they go out of scope.
template <std::size_t N>
class Secret {
 public:
  Secret() = default;
  Secret(const Secret&) = delete;
  Secret& operator=(const Secret&) = delete;
  ~Secret() { Wipe(bytes_); }

  std::span<std::uint8_t, N> bytes() { return bytes_; }
  std::span<const std::uint8_t, N> bytes() const { return bytes_; }

 private:
  std::array<std::uint8_t, N> bytes_{};
};

}  // namespace zuna_security
