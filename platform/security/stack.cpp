// Wipes the stack below the caller.

#include "platform/security/stack.h"

#include <array>
#include <cstdint>

#include "platform/security/secret.h"

namespace zuna_security {

namespace {

/// In bytes; several times what libgcrypt uses.
constexpr std::size_t kDepth = std::size_t{16} << 10;

}  // namespace

// A function of its own, never inlined: its frame then lies where the frames of the calls before it lay.
[[gnu::noinline]] StackWiper::~StackWiper() {
  std::array<std::uint8_t, kDepth> frames;
  Wipe(frames);
}

}  // namespace zuna_security
