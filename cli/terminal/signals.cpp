// Signals.
#include "cli/terminal/signals.h"

#include <unistd.h>

#include "cli/terminal/failure.h"

namespace zuna_cli {

namespace {

extern "C" void EndInterrupted(int) {
  constexpr char kMessage[] = "zuna-convert: interrupted\n";
  // Nothing could be done about a failure here.
  [[maybe_unused]] const auto written = write(STDERR_FILENO, kMessage, sizeof kMessage - 1);
  _exit(static_cast<int>(ExitCode::kInterrupted));
}

}  // namespace

void HandleSignals() {
  struct sigaction action {};
  action.sa_handler = EndInterrupted;
  sigaction(SIGINT, &action, nullptr);
  action.sa_handler = SIG_IGN;
  sigaction(SIGPIPE, &action, nullptr);
  sigaction(SIGXFSZ, &action, nullptr);
}

HoldSignals::HoldSignals() : before_() {
  sigset_t held;
  sigemptyset(&held);
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&held, number);
  sigprocmask(SIG_BLOCK, &held, &before_);
}

HoldSignals::~HoldSignals() { sigprocmask(SIG_SETMASK, &before_, nullptr); }

}  // namespace zuna_cli
