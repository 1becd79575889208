#include "platform/security/secret.h"

#include <cstring>

namespace zuna_security {

void Wipe(MutableBytes memory) {
  // Called through a volatile pointer, which the compiler cannot see through: the write has to happen.
  static void* (*const volatile overwrite)(void*, int, std::size_t) = std::memset;
  if (!memory.empty()) overwrite(memory.data(), 0, memory.size());
}

bool EqualInConstantTime(Bytes a, Bytes b) {
  if (a.size() != b.size()) return false;
  volatile std::uint8_t difference = 0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    difference = static_cast<std::uint8_t>(difference | (a[i] ^ b[i]));
  }
  return difference == 0;
}

}  // namespace zuna_security
