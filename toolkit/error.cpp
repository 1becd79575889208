// The message of an error out of its parts.
#include "toolkit/error.h"

#include <utility>

namespace zuna_toolkit {

namespace {

std::string Message(const ErrorParts& parts) {
  std::string message = parts.problem;
  if (!parts.file.empty()) message = parts.file + ": " + message;
  if (!parts.remedy.empty()) message += "; " + parts.remedy;
  return message;
}

ErrorParts Parts(const std::string& file, const std::string& problem, const std::string& remedy) {
  ErrorParts parts;
  parts.file = file;
  parts.problem = problem;
  parts.remedy = remedy;
  return parts;
}

}  // namespace

Error::Error(ErrorCode code, ErrorParts parts, const std::string& message)
    : RuntimeError(message), code_(code), parts_(std::make_shared<const ErrorParts>(std::move(parts))) {}

Error::Error(ErrorCode code, ErrorParts parts)
    : RuntimeError(Message(parts)),
      code_(code),
      parts_(std::make_shared<const ErrorParts>(std::move(parts))) {}

Error::Error(ErrorCode code, const std::string& file, const std::string& problem, const std::string& remedy)
    : Error(code, Parts(file, problem, remedy)) {}

Error Error::WithFile(const std::string& file) const {
  ErrorParts named = *parts_;
  named.file = file;
  return {code_, std::move(named)};
}

}  // namespace zuna_toolkit
