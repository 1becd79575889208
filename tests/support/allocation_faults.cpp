// Which allocation fails.

#include "tests/support/allocation_faults.h"

#include <cerrno>

#include "tests/support/failing_memory.h"

namespace failing_memory {

namespace {

long g_calls_left = 0;  // 0: not counting
bool g_for_ever = false;
bool g_failed = false;

}  // namespace

std::atomic<long> g_live{0};

bool Fails() {
  if (!(g_failed && g_for_ever)) {
    if (g_calls_left == 0 || --g_calls_left > 0) return false;
    g_failed = true;
  }
  errno = ENOMEM;  // as malloc(3) does; libgcrypt looks at it
  return true;
}

void FailAt(long call, bool for_ever) {
  g_calls_left = call;
  g_for_ever = for_ever;
  g_failed = false;
}

bool Stop() {
  const bool failed = g_failed;
  g_calls_left = 0;
  g_for_ever = false;
  g_failed = false;
  return failed;
}

long Live() { return g_live; }

}  // namespace failing_memory
