#pragma once

#include <cerrno>
#include <string>
#include <string_view>

namespace zuna_security {

/// Throws kit::IoError "PATH: WHAT: REASON; REMEDY" for a value of errno; `what` says what failed and where.
[[noreturn]] void ThrowIoError(const std::string& path, std::string_view what, int error);

/// Makes a system call, again for as long as a signal interrupts it.
template <typename Call>
auto RetryInterrupted(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

}  // namespace zuna_security
