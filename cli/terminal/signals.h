// Signals.
#pragma once

#include <csignal>

namespace zuna_cli {

/// From now on an interrupt (SIGINT) says so and ends the program at once with ExitCode::kInterrupted, and a
/// closed pipe and a file size limit are errors of the write instead of the end of the program.
void HandleSignals();

/// While it lives, signals that would end the program wait: no temporary file is left behind.
class HoldSignals {
 public:
  HoldSignals();
  ~HoldSignals();
  HoldSignals(const HoldSignals&) = delete;
  HoldSignals& operator=(const HoldSignals&) = delete;

 private:
  sigset_t before_;
};

}  // namespace zuna_cli
