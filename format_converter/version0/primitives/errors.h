#pragma once

// The errors of the legacy formats.

#include <stdexcept>
#include <string>

#include "kit/api.h"

namespace version0 {

/// The base of all errors of the legacy formats. Thrown as itself only by the comparison of legacy shows,
/// with the first difference.
class ZUNA_API Version0Error : public std::runtime_error {
 public:
  /// `message` is what what() returns.
  explicit Version0Error(const std::string& message);
  ~Version0Error() override;
};

/// A legacy container does not begin with its four-byte magic.
class ZUNA_API IDError : public Version0Error {
 public:
  /// `message` is what what() returns.
  explicit IDError(const std::string& message);
  ~IDError() override;
};

/// A sequence does not begin with its event code, or a container meets an event code that it does not know.
class ZUNA_API EventCodeError : public Version0Error {
 public:
  /// `message` is what what() returns.
  explicit EventCodeError(const std::string& message);
  ~EventCodeError() override;
};

/// A song has more tracks than the legacy format can hold.
class ZUNA_API TrackCountError : public Version0Error {
 public:
  /// `message` is what what() returns.
  explicit TrackCountError(const std::string& message);
  ~TrackCountError() override;
};

}  // namespace version0
