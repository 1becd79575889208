#pragma once

#include <stdexcept>
#include <string>

#include "kit/api.h"

namespace version0 {

/// Base of all errors of the legacy formats. Thrown as itself only by the comparison of legacy shows, which
/// names the first difference instead of returning false.
class ZUNA_API Version0Error : public std::runtime_error {
 public:
  /// An error with this message.
  explicit Version0Error(const std::string& message);
  ~Version0Error() override;
};

/// A legacy container does not begin with its four-byte magic.
class ZUNA_API IDError : public Version0Error {
 public:
  /// An error with this message.
  explicit IDError(const std::string& message);
  ~IDError() override;
};

/// A sequence does not begin with its event code, or a container meets an event code that it does not know.
class ZUNA_API EventCodeError : public Version0Error {
 public:
  /// An error with this message.
  explicit EventCodeError(const std::string& message);
  ~EventCodeError() override;
};

/// A song has more tracks than the legacy format can hold.
class ZUNA_API TrackCountError : public Version0Error {
 public:
  /// An error with this message.
  explicit TrackCountError(const std::string& message);
  ~TrackCountError() override;
};

}  // namespace version0
