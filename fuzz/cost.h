// What an input may cost: the bounds on memory and on text that every target holds its readers and
// conversions to. A bound that is exceeded ends the process, as a crash does.

#pragma once

#include <cstddef>
#include <string>

#include "tests/support/cost_bounds.h"
#include "tests/support/heap_peak.h"

namespace fuzz {

using zuna_test::CommandHeapBound;
using zuna_test::HeapBound;

/// Holds the memory that is allocated while it lives to a limit. What was allocated before does not count.
class MemoryBound {
 public:
  /// `step` names what is measured, `limit` is in bytes.
  MemoryBound(const char* step, std::size_t limit) : step_(step), limit_(limit) {}
  MemoryBound(const MemoryBound&) = delete;
  MemoryBound& operator=(const MemoryBound&) = delete;
  ~MemoryBound();

 private:
  const char* step_;
  std::size_t limit_;
#ifdef ZUNA_COUNTS_MEMORY
  zuna_test::HeapPeak peak_;
#endif
};

/// Returns what `work` returns, which is one reader or one conversion of an input of `input` bytes.
template <typename Work>
auto Bounded(const char* step, std::size_t input, Work work) {
  const MemoryBound bound(step, HeapBound(input));
  return work();
}

/// Requires that `printed` bytes, or a text, are at most 4 KiB + 64 times the input.
///@{
void RequireShort(std::size_t printed, std::size_t input);
inline void RequireShort(const std::string& text, std::size_t input) { RequireShort(text.size(), input); }
///@}

}  // namespace fuzz
