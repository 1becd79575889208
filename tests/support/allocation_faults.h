// What the replacements of allocating functions share: which call fails, and how many blocks there are.

#pragma once

#include <atomic>

namespace failing_memory {

/// Counts an allocation and tells whether it is to fail; errno is ENOMEM then. Needs no memory.
bool Fails();

/// Blocks that are allocated now. Whoever allocates and frees keeps it right.
extern std::atomic<long> g_live;

}  // namespace failing_memory
