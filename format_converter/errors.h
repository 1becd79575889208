#pragma once

// The error types of the entry points.

#include <stdexcept>
#include <string>

#include "kit/api.h"

/// A file whose version is wrong for the requested conversion.
class ZUNA_API FormatConverterError : public std::logic_error {
 public:
  /// `message` is what what() returns.
  explicit FormatConverterError(const std::string& message);
  ~FormatConverterError() override;
};

/// The file of PrintProgramChanges() (format_converter/inspection.h) cannot be opened. The other entry points
/// throw kit::IoError (kit/error.h) instead.
class ZUNA_API FormatConverterIOError : public std::runtime_error {
 public:
  /// `message` is what what() returns.
  explicit FormatConverterIOError(const std::string& message);
  ~FormatConverterIOError() override;
};
