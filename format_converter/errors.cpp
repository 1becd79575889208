// The error types of the entry points. They are defined here so that the library holds the only type
// record of each class.

#include "format_converter/errors.h"

FormatConverterError::FormatConverterError(const std::string& message) : std::logic_error(message) {}
FormatConverterError::~FormatConverterError() = default;

FormatConverterIOError::FormatConverterIOError(const std::string& message) : std::runtime_error(message) {}
FormatConverterIOError::~FormatConverterIOError() = default;
