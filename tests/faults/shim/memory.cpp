// The allocations of the C library, each of which can fail. Operator new comes here too.

#include <cerrno>
#include <cstddef>

#include "tests/faults/shim/plan.h"

using zuna_faults::Call;
using zuna_faults::Fails;

// The C library's own functions, which are reached without looking up a symbol: that would allocate.
extern "C" {
// NOLINTBEGIN(clang-diagnostic-reserved-identifier): the C library prescribes these names
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
// NOLINTEND(clang-diagnostic-reserved-identifier)

[[gnu::visibility("default")]] void* malloc(std::size_t size) {
  return Fails(Call::kMemory) ? nullptr : __libc_malloc(size);
}

[[gnu::visibility("default")]] void* calloc(std::size_t count, std::size_t size) {
  return Fails(Call::kMemory) ? nullptr : __libc_calloc(count, size);
}

[[gnu::visibility("default")]] void* realloc(void* memory, std::size_t size) {
  return Fails(Call::kMemory) ? nullptr : __libc_realloc(memory, size);
}

[[gnu::visibility("default")]] void* memalign(std::size_t alignment, std::size_t size) {
  return Fails(Call::kMemory) ? nullptr : __libc_memalign(alignment, size);
}

[[gnu::visibility("default")]] void* aligned_alloc(std::size_t alignment, std::size_t size) {
  return Fails(Call::kMemory) ? nullptr : __libc_memalign(alignment, size);
}

[[gnu::visibility("default")]] int posix_memalign(void** memory, std::size_t alignment, std::size_t size) {
  const int before = errno;
  void* const found = Fails(Call::kMemory) ? nullptr : __libc_memalign(alignment, size);
  errno = before;
  if (found == nullptr) return ENOMEM;
  *memory = found;
  return 0;
}
}
