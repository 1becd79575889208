// Every allocation of the process: those of the libraries below, of the C library and of libgcrypt as well.

#include <cerrno>
#include <cstddef>

#include "tests/support/allocation_faults.h"
#include "tests/support/failing_memory.h"

using failing_memory::Fails;
using failing_memory::g_live;

namespace {

void* Counted(void* memory) {
  if (memory != nullptr) ++g_live;
  return memory;
}

}  // namespace

// The C library's own functions.
extern "C" {
// NOLINTBEGIN(clang-diagnostic-reserved-identifier): the C library prescribes these names
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);
// NOLINTEND(clang-diagnostic-reserved-identifier)

[[gnu::visibility("default")]] void* malloc(std::size_t size) noexcept {
  return Fails() ? nullptr : Counted(__libc_malloc(size));
}

[[gnu::visibility("default")]] void* calloc(std::size_t count, std::size_t size) noexcept {
  return Fails() ? nullptr : Counted(__libc_calloc(count, size));
}

[[gnu::visibility("default")]] void* realloc(void* memory, std::size_t size) noexcept {
  if (Fails()) return nullptr;
  void* const grown = __libc_realloc(memory, size);
  return memory == nullptr ? Counted(grown) : grown;
}

[[gnu::visibility("default")]] void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
  return Fails() ? nullptr : Counted(__libc_memalign(alignment, size));
}

[[gnu::visibility("default")]] int posix_memalign(void** memory, std::size_t alignment,
                                                  std::size_t size) noexcept {
  void* const found = Fails() ? nullptr : Counted(__libc_memalign(alignment, size));
  if (found == nullptr) return ENOMEM;
  *memory = found;
  return 0;
}

[[gnu::visibility("default")]] void free(void* memory) noexcept {
  if (memory != nullptr) --g_live;
  __libc_free(memory);
}
}

namespace failing_memory {

void Install() {}

}  // namespace failing_memory
