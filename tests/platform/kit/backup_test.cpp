// The second name of a file that is to be replaced.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "kit/error.h"
#include "kit/file.h"
#include "tests/support/bytes.h"
#include "tests/support/temporary_folder.h"

namespace {

using testing::ElementsAre;
using zuna_test::TemporaryFolder;

constexpr std::size_t kAnySize = 1000;

TEST(BackUp, GivesTheFileTheNumberAfterTheHighest) {
  const TemporaryFolder folder;
  const std::string path = folder.Put("show", "old");
  EXPECT_EQ(kit::BackUp(path, kAnySize), path + ".~1~");
  kit::WriteFileAtomically(path, zuna_test::FromText("new"));
  EXPECT_EQ(kit::BackUp(path, kAnySize), path + ".~2~");
  kit::WriteFileAtomically(path, zuna_test::FromText("newer"));
  std::filesystem::remove(path + ".~1~");
  EXPECT_EQ(kit::BackUp(path, kAnySize), path + ".~3~");
  EXPECT_THAT(folder.Names(), ElementsAre("show", "show.~2~", "show.~3~"));
}

TEST(BackUp, PassesOverTheNumbersOfAnEarlierProcess) {
  const TemporaryFolder folder;
  for (const char* name : {"show.~2~", "show.~12~", "show.~x~", "show.~~", "show.~", "show.~13",
                           "show.~123456~", "other.~20~", "show.bak.~30~"}) {
    folder.Put(name, name);
  }
  const std::string path = folder.Put("show", "old");
  EXPECT_EQ(kit::BackUp(path, kAnySize), path + ".~13~");
  EXPECT_EQ(kit::BackUp(folder.Put("new", "new"), kAnySize), folder / "new.~1~");
}

TEST(BackUp, TakesTheNameThatAKilledProcessHasGivenIt) {
  const TemporaryFolder folder;
  const std::string path = folder.Put("show", "old");
  EXPECT_EQ(kit::BackUp(path, kAnySize), path + ".~1~");
  EXPECT_EQ(kit::BackUp(path, kAnySize), path + ".~1~");
  EXPECT_THAT(folder.Names(), ElementsAre("show", "show.~1~"));
}

TEST(BackUp, IsTheFileItself) {
  const TemporaryFolder folder;
  const std::string path = folder.Put("show", "old");
  const std::string kept = kit::BackUp(path, kAnySize);
  EXPECT_TRUE(std::filesystem::equivalent(path, kept));
  kit::WriteFileAtomically(path, zuna_test::FromText("new"));
  EXPECT_EQ(zuna_test::FileText(kept), "old");
  EXPECT_EQ(zuna_test::FileText(path), "new");
}

TEST(BackUp, FailsWhereTheFileIsNotThere) {
  const TemporaryFolder folder;
  const std::string path = folder / "none";
  try {
    kit::BackUp(path, kAnySize);
    ADD_FAILURE() << "accepted";
  } catch (const kit::IoError& error) {
    EXPECT_TRUE(std::string(error.what()).starts_with(path + ": cannot be kept beside the new file: "))
        << error.what();
  }
}

}  // namespace
