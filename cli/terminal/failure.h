// Exit codes, and what ends a command.
#pragma once

#include <stdexcept>
#include <string>

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

/// Ends a command. The message is ready for the user: "PATH: what happened (where); what to do".
class Failure : public std::runtime_error {
 public:
  Failure(ExitCode code, const std::string& message) : std::runtime_error(message), code_(code) {}
  Failure(ExitCode code, const std::string& path, const std::string& what)
      : Failure(code, path + ": " + what) {}

  ExitCode code() const { return code_; }

 private:
  ExitCode code_;
};

/// The exception that is being handled, as a failure.
Failure CurrentFailure();

}  // namespace zuna_cli
