#pragma once

#include <ios>
#include <string>

#include "kit/error.h"

/// Calls `read` and returns what it returns. A stream's failure becomes a kit::IoError with `what_failed`
/// and, directly behind it, the failure's own text; every other exception passes.
template <typename Read>
auto guarded_read(const std::string& what_failed, Read read) {
  try {
    return read();
  } catch (const std::ios_base::failure& failure) {
    throw kit::IoError(what_failed + failure.what());
  }
}
