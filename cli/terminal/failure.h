// Exit codes, and what ends a command.
#pragma once

#include <memory>
#include <string>

#include "toolkit/error.h"

namespace zuna_cli {

/// What the tool's exit code tells.
enum class ExitCode : int {
  kDone = 0,
  kNegative = 1,  ///< the answer to the question is no
  kUsage = 2,     ///< the command line is wrong
  kRefused = 3,   ///< by policy: an output that exists, binary on a terminal, …
  kBadInput = 4,  ///< bad or unsupported input
  kWrongKey = 5,
  kIo = 6,          ///< something cannot be opened, read or written
  kPartFailed = 7,  ///< part of a batch failed
  kNothingMatched = 8,
  kInternal = 70,
  kInterrupted = 130,
  kClosedPipe = 141,  ///< the output pipe was closed; what a shell reports then
};

using zuna_toolkit::ErrorCode;

/// Ends a command. Its message is ready for the user: "PATH: what happened (where); what to do".
class Failure : public zuna_toolkit::Error {
 public:
  using Error::Error;
  explicit Failure(const Error& error) : Error(error) {}

  ExitCode exit_code() const;

  /// What happened, in words that are the same for all files with this cause: a problem may name what it
  /// was for one of them. That is the problem itself unless it was set.
  ///@{
  const std::string& common_problem() const { return common_problem_ ? *common_problem_ : parts().problem; }
  void SetCommonProblem(const std::string& problem) {
    common_problem_ = std::make_shared<const std::string>(problem);
  }
  ///@}

 private:
  std::shared_ptr<const std::string> common_problem_;  ///< shared, so that copying cannot fail
};

/// The exit code of this kind of trouble.
ExitCode ExitCodeOf(zuna_toolkit::ErrorKind kind);

/// The exception that is being handled, as a failure with its parts.
Failure CurrentFailure();

}  // namespace zuna_cli
