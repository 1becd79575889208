// Signals.
#pragma once

#include <csignal>
#include <string>

namespace zuna_cli {

/// From now on an interrupt (SIGINT), unless the program was told to ignore it, says so and ends the program
/// at once with ExitCode::kInterrupted, and a closed pipe and a file size limit are errors of the write
/// instead of the end of the program.
void HandleSignals();

/// Whether the message of an interrupt says from now on that all files of the output are in their places.
void NoteOutput(bool is_whole);

/// While it lives, signals that are sent to end a program (SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU,
/// SIGALRM, SIGUSR1, SIGUSR2) wait: no temporary file is left behind. Those that the program was told to
/// ignore stay ignored.
class HoldSignals {
 public:
  HoldSignals();
  ~HoldSignals();
  HoldSignals(const HoldSignals&) = delete;
  HoldSignals& operator=(const HoldSignals&) = delete;

  /// Whether one of them waits. It ends the program when this object is destroyed. Never while there is a
  /// DeferSignals, which gets it then: what is begun is finished.
  bool IsPending() const;

 private:
  sigset_t held_;
  sigset_t before_;
};

/// While it lives, the first of these signals only asks for the end of the command, so that files which are
/// begun are finished, in whatever thread; a SIGINT after it ends the program at once. The destructor of this
/// object lets the first one through. There is one at a time.
class DeferSignals {
 public:
  DeferSignals();
  ~DeferSignals();
  DeferSignals(const DeferSignals&) = delete;
  DeferSignals& operator=(const DeferSignals&) = delete;

  /// Whether one of them has come.
  static bool IsAsked();
};

/// While it lives, a signal that ends the program, but for an interrupt, writes a message first. There is one
/// at a time.
class TellBeforeEnd {
 public:
  /// `message` ends with a line break.
  explicit TellBeforeEnd(std::string message);
  ~TellBeforeEnd();
  TellBeforeEnd(const TellBeforeEnd&) = delete;
  TellBeforeEnd& operator=(const TellBeforeEnd&) = delete;

 private:
  std::string message_;
};

}  // namespace zuna_cli
