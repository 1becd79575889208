// Every way in which the security library gets memory: operator new, realloc(3), malloc(3), which compilers
// call for a realloc() of nothing, and libgcrypt.

#include "tests/support/failing_memory.h"

#include <gcrypt.h>

#include <cstdlib>
#include <new>

#include "tests/support/allocation_faults.h"

using failing_memory::Fails;
using failing_memory::g_live;

extern "C" {
// NOLINTBEGIN(clang-diagnostic-reserved-identifier): the linker's --wrap prescribes these names
void* __real_malloc(std::size_t size);
void* __real_realloc(void* memory, std::size_t size);
void __real_free(void* memory);

// Visible, because the linker also wraps the names that a sanitized shared library asks for.
[[gnu::visibility("default")]] void* __wrap_realloc(void* memory, std::size_t size) {
  if (Fails()) return nullptr;
  void* const grown = __real_realloc(memory, size);
  if (grown != nullptr && memory == nullptr) ++g_live;
  return grown;
}

[[gnu::visibility("default")]] void* __wrap_malloc(std::size_t size) {
  if (Fails()) return nullptr;
  void* const memory = __real_malloc(size);
  if (memory != nullptr) ++g_live;
  return memory;
}

[[gnu::visibility("default")]] void __wrap_free(void* memory) {
  if (memory != nullptr) --g_live;
  __real_free(memory);
}
// NOLINTEND(clang-diagnostic-reserved-identifier)

static void* AllocateForGcrypt(std::size_t size) { return __wrap_realloc(nullptr, size); }
static int IsSecure(const void* /*memory*/) { return 0; }
}

void* operator new(std::size_t size) {
  void* const memory = __wrap_realloc(nullptr, size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void operator delete(void* memory) noexcept { __wrap_free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { __wrap_free(memory); }

namespace failing_memory {

void Install() {
  gcry_set_allocation_handler(AllocateForGcrypt, AllocateForGcrypt, IsSecure, __wrap_realloc, __wrap_free);
}

}  // namespace failing_memory
