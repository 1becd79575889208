// What the other libraries throw, as the toolkit's own errors.
#pragma once

#include <exception>
#include <new>
#include <string>

#include "kit/error.h"
#include "toolkit/error.h"

namespace zuna_toolkit {

/// What to do about damage that cannot be corrected by hand.
inline constexpr const char* kGetUndamagedCopy = "get an undamaged copy of the file";

/// What to do about a song that a person can edit.
inline constexpr const char* kCorrectSong = "correct the song (edit its text form)";

/// Called in a handler of `error`: passes std::bad_alloc on, which tells nothing about the data.
inline void PassOnBadAlloc(const std::exception& error) {
  if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) throw;
}

/// Called in a handler: throws the exception being handled as an Error about the file called `name`. Only
/// std::bad_alloc stays what it is. An exception that tells nothing else means that the content is at fault.
/// `data_code` is the code of a cmn::DataError.
[[noreturn]] void ThrowAsError(const std::string& name, ErrorCode data_code);

/// Returns what `work` returns. What it throws becomes an Error about the file called `name`, as
/// ThrowAsError() does.
template <typename Work>
auto OnFile(const std::string& name, Work work, ErrorCode data_code = ErrorCode::kBadContent) {
  try {
    return work();
  } catch (...) {
    ThrowAsError(name, data_code);
  }
}

}  // namespace zuna_toolkit
