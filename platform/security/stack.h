// What cryptographic functions leave on the stack.

#pragma once

namespace zuna_security {

/// Overwrites what the functions that its scope called have left on the stack: keys, key schedules and inner
/// states of hash functions, in frames that are not in use any more.
class StackWiper {
 public:
  StackWiper() = default;
  StackWiper(const StackWiper&) = delete;
  StackWiper& operator=(const StackWiper&) = delete;
  ~StackWiper();
};

}  // namespace zuna_security
