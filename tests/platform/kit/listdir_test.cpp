#include "kit/listdir.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "kit/error.h"

namespace {

TEST(Listdir, GivesTheNamesSortedByteByByte) {
  const auto dir = std::filesystem::path(testing::TempDir()) / "zuna_listdir";
  std::filesystem::remove_all(dir);
  std::filesystem::create_directories(dir / "folder");
  for (const char* name : {"b.showdata", "A.showdata", ".hidden"}) std::ofstream(dir / name).put('x');
  EXPECT_THAT(kit::listdir(dir.string()),
              testing::ElementsAre(".hidden", "A.showdata", "b.showdata", "folder"));
  std::filesystem::remove_all(dir);
}

TEST(Listdir, NamesADirectoryThatCannotBeRead) {
  try {
    kit::listdir("/no/such/directory");
    FAIL() << "nothing was thrown";
  } catch (const kit::IoError& error) {
    EXPECT_THAT(error.what(), testing::StartsWith("/no/such/directory: cannot list the directory: "));
  }
}

}  // namespace
