#include "cli/terminal/signals.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <optional>

namespace zuna_cli {
namespace {

constexpr int kInterrupted = 130;

/// Interrupts this process while a file is written. Ends with 1 where the file would not be finished.
void InterruptWrite(bool is_one_of_many) {
  HandleSignals();
  std::optional<DeferSignals> deferred;
  if (is_one_of_many) deferred.emplace();
  {
    const HoldSignals held;
    std::raise(SIGINT);
    if (held.IsPending() == is_one_of_many) _exit(1);
  }
  _exit(DeferSignals::IsAsked() ? 2 : 3);
}

TEST(Signals, AnInterruptEndsTheWriteOfASingleFile) {
  EXPECT_EXIT(InterruptWrite(false), testing::ExitedWithCode(kInterrupted), "zuna-convert: interrupted");
}

TEST(Signals, AnInterruptLetsAFileOfManyBeFinished) {
  EXPECT_EXIT(InterruptWrite(true), testing::ExitedWithCode(2), "");
}

TEST(Signals, ADeferredInterruptEndsTheProgramAfterwards) {
  const auto run = [] {
    HandleSignals();
    const DeferSignals deferred;
    std::raise(SIGINT);
  };
  EXPECT_EXIT(run(), testing::ExitedWithCode(kInterrupted), "zuna-convert: interrupted");
}

}  // namespace
}  // namespace zuna_cli
