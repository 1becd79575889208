// What killed processes leave in folders of outputs, and how it goes.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "kit/file.h"
#include "tests/support/bytes.h"
#include "tests/support/temporary_folder.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using zuna_test::TemporaryFolder;

constexpr const char* kFolder = ".zuna-0123456789abcdef.tmp";

/// Leaves the private folder of an output behind, as a process does that is killed.
void LeaveFolder(const std::string& output) {
  const pid_t child = ::fork();
  if (child == 0) {
    kit::OutputFiles files(kit::Existing::kRefuse);
    files.Add(output);
    files.Write(0, zuna_test::FromText("not in its place"));
    ::kill(::getpid(), SIGKILL);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFSIGNALED(status));
}

TEST(Leftovers, OfAKilledProcessAreRemoved) {
  const TemporaryFolder folder;
  LeaveFolder(folder / "out");
  EXPECT_THAT(folder.Names(), SizeIs(1));
  kit::RemoveLeftovers(folder.path().string());
  EXPECT_THAT(folder.Names(), IsEmpty());
}

TEST(Leftovers, OfAProcessThatRunsStay) {
  const TemporaryFolder folder;
  kit::OutputFiles files(kit::Existing::kRefuse);
  files.Add(folder / "out");
  files.Write(0, zuna_test::FromText("new"));
  kit::RemoveLeftovers(folder.path().string());
  files.Commit();
  EXPECT_THAT(folder.Names(), ElementsAre("out"));
}

TEST(Leftovers, AreNothingElse) {
  const TemporaryFolder folder;
  for (const char* name : {".zuna-0123456789abcdef.tmp.x", ".zuna-0123456789abcdeg.tmp", ".zuna-0123.tmp",
                           ".zuna-0123456789abcdef.tm", "zuna-00123456789abcdef.tmp"}) {
    std::filesystem::create_directory(folder.path() / name);
  }
  folder.Put(".zuna-1123456789abcdef.tmp", "a file");
  std::filesystem::create_directory_symlink(".", folder.path() / ".zuna-2123456789abcdef.tmp");
  const auto before = folder.Names();
  kit::RemoveLeftovers(folder.path().string());
  EXPECT_EQ(folder.Names(), before);
}

TEST(Leftovers, WithAnOldFileStay) {
  for (const char* name : {"old-0", "new-", "new-0x", "something"}) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.path() / kFolder);
    folder.Put(std::string(kFolder) + "/new-1", "new");
    folder.Put(std::string(kFolder) + '/' + name, "the only copy");
    kit::RemoveLeftovers(folder.path().string());
    EXPECT_TRUE(std::filesystem::exists(folder.path() / kFolder / "new-1")) << name;
    EXPECT_TRUE(std::filesystem::exists(folder.path() / kFolder / name));
  }
}

TEST(Leftovers, AreNoReasonToFail) {
  const TemporaryFolder folder;
  kit::RemoveLeftovers(folder / "none");
  kit::RemoveLeftovers(folder.Put("file", ""));
  std::filesystem::create_directories(folder.path() / kFolder / "new-0");
  kit::RemoveLeftovers(folder.path().string());
  EXPECT_TRUE(std::filesystem::exists(folder.path() / kFolder / "new-0"));
}

}  // namespace
