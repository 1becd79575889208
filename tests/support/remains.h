// Finds secrets that were left behind in memory: in blocks that were freed, and on the stack.

#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace remains {

/// A secret to look for. It is kept inverted, so that the tests' own memory does not hold it.
class Secret {
 public:
  /// `inverted` has every bit of the secret inverted.
  explicit Secret(std::vector<std::uint8_t> inverted) : inverted_(std::move(inverted)) {}

  /// Whether 8 bytes of the secret in a row, or all where there are fewer, stand in `memory`.
  bool IsIn(std::span<const std::uint8_t> memory) const;

 private:
  std::vector<std::uint8_t> inverted_;
};

/// From now on, looks for `secret` in every block that is freed; for nothing with a null pointer.
void WatchFreedMemory(const Secret* secret);

/// How often the secret was found since then.
int FoundInFreedMemory();

/// Looks at a block and frees it.
void LookAndFree(void* memory);

/// From now on, the `call`th operator new fails (1 for the next one); none with 0.
void FailAllocation(long call);

/// Runs `work` on a stack of its own and returns that stack, as it was when `work` ended.
std::vector<std::uint8_t> StackAfter(const std::function<void()>& work);

}  // namespace remains
