// Directories, extensions and joined paths.

#include "kit/path.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "kit/error.h"
#include "tests/support/temporary_folder.h"

namespace {

TEST(Listdir, GivesTheNamesSortedByteByByte) {
  const zuna_test::TemporaryFolder folder;
  std::filesystem::create_directory(folder.path() / "folder");
  for (const char* const name : {"b.showdata", "A.showdata", ".hidden"}) folder.Put(name, "x");
  EXPECT_THAT(kit::listdir(folder.path().string()),
              testing::ElementsAre(".hidden", "A.showdata", "b.showdata", "folder"));
}

TEST(Listdir, NamesADirectoryThatCannotBeRead) {
  try {
    kit::listdir("/no/such/directory");
    FAIL() << "nothing was thrown";
  } catch (const kit::IoError& error) {
    EXPECT_THAT(error.what(), testing::StartsWith("/no/such/directory: cannot list the directory: "));
  }
}

TEST(Path, ExtensionIncludesItsPoint) {
  EXPECT_EQ(kit::path::extension("shows/opera.showdata"), ".showdata");
  EXPECT_EQ(kit::path::extension("opera.SHOWDATA"), ".SHOWDATA");
  EXPECT_EQ(kit::path::extension("opera.showdata.bak"), ".bak");
  EXPECT_EQ(kit::path::extension("a.b/opera"), "");
  EXPECT_EQ(kit::path::extension(".showdata"), "");
  EXPECT_EQ(kit::path::extension(""), "");
}

TEST(Path, JoinPutsOneSlashBetween) {
  EXPECT_EQ(kit::path::Join("shows", "a.showdata"), "shows/a.showdata");
  EXPECT_EQ(kit::path::Join("shows/", "a.showdata"), "shows/a.showdata");
  EXPECT_EQ(kit::path::Join("", "a.showdata"), "a.showdata");
  EXPECT_EQ(kit::path::Join("shows", "/tmp/a.showdata"), "/tmp/a.showdata");
}

}  // namespace
