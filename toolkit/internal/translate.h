// What the other libraries throw, as the toolkit's own errors.
#pragma once

#include <new>
#include <string>

#include "kit/error.h"
#include "toolkit/error.h"

namespace zuna_toolkit {

/// What to do about damage that cannot be corrected by hand.
inline constexpr const char* kGetUndamagedCopy = "get an undamaged copy of the file";

/// Called in a handler: throws the exception being handled as an Error about the file called `name`. Only
/// std::bad_alloc stays what it is. An exception that tells nothing else means that the content is at fault.
[[noreturn]] void ThrowAsError(const std::string& name);

/// Returns what `work` returns. What it throws becomes an Error about the file called `name`.
template <typename Work>
auto OnFile(const std::string& name, Work work) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    throw;
  } catch (...) {
    ThrowAsError(name);
  }
}

}  // namespace zuna_toolkit
