// The errors that all libraries share.

#pragma once

#include <stdexcept>
#include <string>

#include "kit/api.h"

namespace kit {

/// Base of the errors that the product's libraries report at run time. Carries nothing but its message.
class ZUNA_API RuntimeError : public std::runtime_error {
 public:
  /// An error with this message.
  explicit RuntimeError(const std::string& message) : std::runtime_error(message) {}
};

/// A file or stream could not be opened, read or written.
class ZUNA_API IoError : public RuntimeError {
 public:
  /// An error with this message.
  explicit IoError(const std::string& message) : RuntimeError(message) {}
};

}  // namespace kit
