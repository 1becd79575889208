#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace zuna_security {

using Bytes = std::span<const std::uint8_t>;
using MutableBytes = std::span<std::uint8_t>;

/// Overwrites memory with zeros, also where the compiler can see that nobody reads it afterwards.
void Wipe(MutableBytes memory);

/// Whether two secrets are the same, in a time that depends on their lengths only.
bool EqualInConstantTime(Bytes a, Bytes b);

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
