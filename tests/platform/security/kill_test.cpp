// A process that is killed while it replaces a file.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <iostream>
#include <iterator>
#include <random>
#include <thread>

#include "tests/support/temporary_folder.h"
#include "zuna_sec/cipher_stream.h"

namespace {

const std::string& Content(bool second) {
  static const std::string contents[] = {std::string(300'000, 'a'), std::string(500'000, 'b')};
  return contents[second ? 1 : 0];
}

/// Writes one content and the other into the file, for ever.
[[noreturn]] void RewriteForever(const std::string& path) {
  for (bool second = true;; second = !second) {
    zuna_sec::TwoFishCipherStream stream(std::string(), {}, {});
    stream.GetStream() << Content(second);
    stream.WriteToFile(path);
  }
}

TEST(KillTest, AtAnyMomentTheFileIsOneOrTheOther) {
  const zuna_test::TemporaryFolder folder;
  const std::string path = folder / "file";
  zuna_sec::TwoFishCipherStream first(std::string(), {}, {});
  first.GetStream() << Content(false);
  first.WriteToFile(path);

  std::mt19937 random(7);
  bool changed = false;
  for (int round = 0; round < 30; ++round) {
    const pid_t child = ::fork();
    if (child == 0) {
      try {
        RewriteForever(path);
      } catch (...) {
        ::_exit(1);  // ended by itself: the parent sees no signal
      }
    }
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 60'000));
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the child failed to write";

    zuna_sec::TwoFishCipherStream stream(path, {}, {});
    const std::string found{std::istreambuf_iterator<char>(stream.GetStream()), {}};
    ASSERT_TRUE(found == Content(false) || found == Content(true)) << found.size() << " bytes";
    changed = changed || found == Content(true);
  }
  EXPECT_TRUE(changed) << "no child ever wrote the file: nothing was tested";
}

}  // namespace
