// The memory is looked at where it is freed: operator delete and, by the linker's --wrap, free(3).

#include "tests/support/remains.h"

#include <malloc.h>
#include <pthread.h>

#include <algorithm>
#include <cstdlib>
#include <new>

#include "kit/wipe.h"

namespace {

constexpr std::size_t kFewest = 8;  // bytes in a row that are no accident
constexpr std::size_t kStep = 4;    // bytes from one piece that is looked for to the next

const remains::Secret* g_watched = nullptr;
int g_found = 0;
long g_calls_left = 0;  // until an allocation fails; 0 where none does

constexpr std::size_t kStackSize = std::size_t{1} << 20;

// What ends a thread uses the uppermost part of its stack; the work happens below this.
constexpr std::size_t kUppermost = std::size_t{64} << 10;

[[gnu::noinline]] void RunBelow(const std::function<void()>& work) {
  std::uint8_t uppermost[kUppermost];
  kit::Wipe(uppermost);  // so that the compiler does not leave the array out
  work();
  kit::Wipe(uppermost);
}

void* RunThread(void* work) {
  RunBelow(*static_cast<const std::function<void()>*>(work));
  return nullptr;
}

}  // namespace

extern "C" {
// NOLINTBEGIN(clang-diagnostic-reserved-identifier): the linker's --wrap prescribes these names
void __real_free(void* memory);
[[gnu::visibility("default")]] void __wrap_free(void* memory) {
  if (memory != nullptr) {
    const std::span<std::uint8_t> block(static_cast<std::uint8_t*>(memory), malloc_usable_size(memory));
    if (g_watched != nullptr && g_watched->IsIn(block)) ++g_found;
    kit::Wipe(block);  // so that it is not found again in the next block here
  }
  __real_free(memory);
}
// NOLINTEND(clang-diagnostic-reserved-identifier)
}

void* operator new(std::size_t size) {
  if (g_calls_left > 0 && --g_calls_left == 0) throw std::bad_alloc();
  void* const memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void operator delete(void* memory) noexcept { remains::LookAndFree(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { remains::LookAndFree(memory); }

namespace remains {

bool Secret::IsIn(std::span<const std::uint8_t> memory) const {
  const auto same = [](std::uint8_t byte, std::uint8_t inverted) { return (byte ^ 0xFF) == inverted; };
  const std::span<const std::uint8_t> inverted = inverted_;
  const std::size_t length = std::min(kFewest, inverted.size());
  for (std::size_t i = 0; i + length <= inverted.size(); i += kStep) {
    const auto piece = inverted.subspan(i, length);
    if (std::search(memory.begin(), memory.end(), piece.begin(), piece.end(), same) != memory.end())
      return true;
  }
  return false;
}

void WatchFreedMemory(const Secret* secret) {
  g_watched = secret;
  g_found = 0;
}

int FoundInFreedMemory() { return g_found; }

void FailAllocation(long call) { g_calls_left = call; }

void LookAndFree(void* memory) { __wrap_free(memory); }

std::vector<std::uint8_t> StackAfter(const std::function<void()>& work) {
  std::vector<std::uint8_t> stack(kStackSize);
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstack(&attributes, stack.data(), stack.size());
  pthread_t thread;
  const int error =
      pthread_create(&thread, &attributes, RunThread, const_cast<std::function<void()>*>(&work));
  pthread_attr_destroy(&attributes);
  if (error != 0) throw std::bad_alloc();
  pthread_join(thread, nullptr);
  return stack;
}

}  // namespace remains
