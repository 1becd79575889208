// Counts the bytes of the heap.

#include "tests/support/heap_peak.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>

#include "tests/support/sanitized.h"

namespace {

std::atomic<std::size_t> g_in_use = 0;
std::atomic<std::size_t> g_peak = 0;

void CountAllocated(std::size_t size) {
  const std::size_t in_use = g_in_use += size;
  std::size_t peak = g_peak;
  while (peak < in_use && !g_peak.compare_exchange_weak(peak, in_use)) {
  }
}

void CountFreed(std::size_t size) { g_in_use -= size; }

}  // namespace

#ifdef ZUNA_SANITIZED

extern "C" {
// NOLINTBEGIN(clang-diagnostic-reserved-identifier): the names of the sanitizers' interface
int __sanitizer_install_malloc_and_free_hooks(void (*allocated)(const volatile void*, std::size_t),
                                              void (*freed)(const volatile void*));
std::size_t __sanitizer_get_allocated_size(const volatile void* memory);
// NOLINTEND(clang-diagnostic-reserved-identifier)
}

namespace {

void OnAllocated(const volatile void* /*memory*/, std::size_t size) { CountAllocated(size); }
void OnFreed(const volatile void* memory) {
  if (memory != nullptr) CountFreed(__sanitizer_get_allocated_size(memory));
}

/// Memory that was allocated before the hooks were there is not known to have been counted.
const int g_installed = __sanitizer_install_malloc_and_free_hooks(OnAllocated, OnFreed);

}  // namespace

#else

#include <malloc.h>

extern "C" {
// NOLINTBEGIN(clang-diagnostic-reserved-identifier): glibc's names for its own functions
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);
// NOLINTEND(clang-diagnostic-reserved-identifier)

static void* Counted(void* memory) {
  if (memory != nullptr) CountAllocated(malloc_usable_size(memory));
  return memory;
}

// Visible, so that the shared libraries call these too.
[[gnu::visibility("default")]] void* malloc(std::size_t size) noexcept {
  return Counted(__libc_malloc(size));
}

[[gnu::visibility("default")]] void* calloc(std::size_t count, std::size_t size) noexcept {
  return Counted(__libc_calloc(count, size));
}

[[gnu::visibility("default")]] void* realloc(void* memory, std::size_t size) noexcept {
  const std::size_t before = memory == nullptr ? 0 : malloc_usable_size(memory);
  void* const grown = __libc_realloc(memory, size);
  if (grown != nullptr || size == 0) CountFreed(before);
  return Counted(grown);
}

[[gnu::visibility("default")]] void* memalign(std::size_t alignment, std::size_t size) noexcept {
  return Counted(__libc_memalign(alignment, size));
}

[[gnu::visibility("default")]] void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
  return Counted(__libc_memalign(alignment, size));
}

[[gnu::visibility("default")]] int posix_memalign(void** memory, std::size_t alignment,
                                                  std::size_t size) noexcept {
  void* const allocated = Counted(__libc_memalign(alignment, size));
  if (allocated == nullptr) return ENOMEM;
  *memory = allocated;
  return 0;
}

[[gnu::visibility("default")]] void free(void* memory) noexcept {
  if (memory != nullptr) CountFreed(malloc_usable_size(memory));
  __libc_free(memory);
}
}

#endif

namespace zuna_test {

HeapPeak::HeapPeak() : at_beginning_(g_in_use), peak_before_(g_peak) { g_peak = at_beginning_; }

HeapPeak::~HeapPeak() {
  if (g_peak < peak_before_) g_peak = peak_before_;
}

std::size_t HeapPeak::bytes() const {
  const std::size_t peak = g_peak;
  return peak < at_beginning_ ? 0 : peak - at_beginning_;
}

}  // namespace zuna_test
