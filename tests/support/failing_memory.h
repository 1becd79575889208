// Lets allocations fail one after the other.

#pragma once

namespace failing_memory {

/// Takes over libgcrypt's memory too. Call it before libgcrypt is first used.
void Install();

/// From now on, the `call`th allocation fails (1 for the next one), and with `for_ever` all that follow it.
void FailAt(long call, bool for_ever);

/// Lets every allocation succeed again. Returns whether one has failed since FailAt().
bool Stop();

/// Blocks that are allocated now.
long Live();

}  // namespace failing_memory
