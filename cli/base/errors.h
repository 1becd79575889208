#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include "toolkit/error.h"
#include "toolkit/words.h"

namespace zuna_cli {

using zuna_toolkit::Counted;
using zuna_toolkit::Tally;

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
  kClosedPipe = 141,  ///< nobody reads the output any more; what a shell reports then
};

/// What ends a command. The message is ready for the user: "PATH: what happened (where); what to do". An
/// empty one means that there is nothing to tell.
class Failure : public std::runtime_error {
 public:
  Failure(ExitCode code, const std::string& message) : std::runtime_error(message), code_(code) {}
  Failure(ExitCode code, const std::string& path, const std::string& what)
      : Failure(code, path + ": " + what) {}

  ExitCode code() const { return code_; }

 private:
  ExitCode code_;
};

/// The exception that is being handled, as a failure of the file called `name`: errors of the libraries that
/// do not tell otherwise mean that its content is at fault.
Failure FailureOf(const std::string& name);

/// The exception that is being handled, as the failure of the whole command.
Failure FailureOfCommand();

/// Runs `work` and reports what it throws as a failure of the file called `name`.
template <class Work>
auto OnFile(const std::string& name, Work&& work) {
  try {
    return std::forward<Work>(work)();
  } catch (const std::bad_alloc&) {
    throw;
  } catch (...) {
    throw FailureOf(name);
  }
}

}  // namespace zuna_cli
