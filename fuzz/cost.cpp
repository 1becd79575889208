// Compares what an input costs with its bounds.

#include "fuzz/cost.h"

#include <cstdio>
#include <cstdlib>

namespace fuzz {

namespace {

void RequireAtMost(const char* what, std::size_t bytes, std::size_t limit) {
  if (bytes <= limit) return;
  std::fprintf(stderr, "does not hold: %s: %zu bytes, and at most %zu are allowed\n", what, bytes, limit);
  std::abort();
}

}  // namespace

MemoryBound::~MemoryBound() {
#ifdef ZUNA_COUNTS_MEMORY
  RequireAtMost(step_, peak_.bytes(), limit_);
#endif
}

void RequireShort(std::size_t printed, std::size_t input) {
  RequireAtMost("what is printed", printed, zuna_test::PrintedBound(input));
}

}  // namespace fuzz
