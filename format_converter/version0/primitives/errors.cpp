// The errors of the legacy formats. They are defined here so that the library holds the only type record
// of each class and a handler in any library recognises it.

#include "format_converter/version0/primitives/errors.h"

namespace version0 {

Version0Error::Version0Error(const std::string& message) : std::runtime_error(message) {}
IDError::IDError(const std::string& message) : Version0Error(message) {}
EventCodeError::EventCodeError(const std::string& message) : Version0Error(message) {}
TrackCountError::TrackCountError(const std::string& message) : Version0Error(message) {}

Version0Error::~Version0Error() = default;
IDError::~IDError() = default;
EventCodeError::~EventCodeError() = default;
TrackCountError::~TrackCountError() = default;

}  // namespace version0
