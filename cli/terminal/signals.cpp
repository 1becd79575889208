// Signals.
#include "cli/terminal/signals.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <string_view>
#include <utility>

#include "cli/terminal/failure.h"

namespace zuna_cli {

namespace {

/// What people, batch systems and timers send to end a program.
constexpr std::array kEnding = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU, SIGALRM, SIGUSR1, SIGUSR2};

// Handlers and threads share them.
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<const char*>::is_always_lock_free);
std::atomic<int> g_has_output = 0;
std::atomic<int> g_asked = 0;  ///< the signal that a DeferSignals holds back
std::atomic<int> g_is_deferring = 0;
std::atomic<const char*> g_last_message = nullptr;  ///< of a TellBeforeEnd

/// Called by handlers of signals.
void Say(std::string_view message) {
  // To write to a pipe that is full and not read would keep the program from ending.
  pollfd standard_error{STDERR_FILENO, POLLOUT, 0};
  if (poll(&standard_error, 1, 0) != 1) return;
  // Nothing could be done about a failure here.
  [[maybe_unused]] const auto written = write(STDERR_FILENO, message.data(), message.size());
}

extern "C" void EndInterrupted(int) {
  constexpr std::string_view kWithout = "zuna-convert: interrupted\n";
  constexpr std::string_view kWith = "zuna-convert: interrupted after all output was written\n";
  Say(g_has_output != 0 ? kWith : kWithout);
  _exit(static_cast<int>(ExitCode::kInterrupted));
}

extern "C" void AskToEnd(int number) {
  int none = 0;
  if (g_asked.compare_exchange_strong(none, number)) return;
  // A person who asks again; other programs send some signals twice.
  if (number == SIGINT) _exit(static_cast<int>(ExitCode::kInterrupted));
}

void SetHandler(int number, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  sigaction(number, &action, nullptr);
}

/// The signal comes again when this returns, and ends the program.
extern "C" void TellAndEnd(int number) {
  if (const char* message = g_last_message) Say(message);
  SetHandler(number, SIG_DFL);
  raise(number);
}

bool IsIgnored(int number) {
  struct sigaction action {};
  sigaction(number, nullptr, &action);
  return action.sa_handler == SIG_IGN;
}

}  // namespace

void HandleSignals() {
  if (!IsIgnored(SIGINT)) SetHandler(SIGINT, EndInterrupted);
  SetHandler(SIGPIPE, SIG_IGN);
  SetHandler(SIGXFSZ, SIG_IGN);
}

void NoteOutput(bool is_whole) { g_has_output = is_whole ? 1 : 0; }

HoldSignals::HoldSignals() : held_(), before_() {
  sigemptyset(&held_);
  for (const int number : kEnding) {
    if (!IsIgnored(number)) sigaddset(&held_, number);
  }
  sigprocmask(SIG_BLOCK, &held_, &before_);
}

bool HoldSignals::IsPending() const {
  if (g_is_deferring != 0) return false;
  sigset_t pending;
  sigemptyset(&pending);
  sigpending(&pending);
  return std::any_of(kEnding.begin(), kEnding.end(), [&](int number) {
    return sigismember(&held_, number) == 1 && sigismember(&pending, number) == 1;
  });
}

HoldSignals::~HoldSignals() { sigprocmask(SIG_SETMASK, &before_, nullptr); }

DeferSignals::DeferSignals() {
  g_asked = 0;
  g_is_deferring = 1;
  for (const int number : kEnding) {
    if (!IsIgnored(number)) SetHandler(number, AskToEnd);
  }
}

DeferSignals::~DeferSignals() {
  g_is_deferring = 0;
  for (const int number : kEnding) {
    if (!IsIgnored(number)) SetHandler(number, number == SIGINT ? EndInterrupted : SIG_DFL);
  }
  if (g_asked != 0) raise(g_asked);
}

TellBeforeEnd::TellBeforeEnd(std::string message) : message_(std::move(message)) {
  g_last_message = message_.c_str();
  for (const int number : kEnding) {
    if (number != SIGINT && !IsIgnored(number)) SetHandler(number, TellAndEnd);
  }
}

TellBeforeEnd::~TellBeforeEnd() {
  for (const int number : kEnding) {
    if (number != SIGINT && !IsIgnored(number)) SetHandler(number, SIG_DFL);
  }
  g_last_message = nullptr;
}

bool DeferSignals::IsAsked() { return g_asked != 0; }

}  // namespace zuna_cli
