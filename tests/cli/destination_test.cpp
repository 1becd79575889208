// Outputs that cannot take their places.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

#include "cli/shared/output.h"
#include "kit/error.h"
#include "tests/platform/kit/failing_calls.h"
#include "tests/support/bytes.h"
#include "tests/support/temporary_folder.h"

namespace zuna_cli {
namespace {

using failing_calls::Failure;
using failing_calls::Failures;
using testing::ElementsAre;
using zuna_test::TemporaryFolder;

/// Writes the file "show" in place of an old one, which is kept, while calls fail.
void WriteInPlace(const TemporaryFolder& folder, std::vector<Failure> failing) {
  const std::string path = folder.Put("show", "old");
  Destination destination({path, true, true}, {});
  const Failures failures(std::move(failing));
  destination.KeepOld();
  destination.Write(zuna_test::FromText("new"));
}

TEST(Destination, KeepsACopyWhereThereAreNoHardLinks) {
  for (const int error : {EPERM, ENOTSUP, EMLINK, EXDEV, EACCES, ENOSYS, EINVAL}) {
    const TemporaryFolder folder;
    WriteInPlace(folder, {{"linkat", error}});
    EXPECT_THAT(folder.Names(), ElementsAre("show", "show.~1~"));
    EXPECT_EQ(zuna_test::FileText(folder / "show"), "new");
    EXPECT_EQ(zuna_test::FileText(folder / "show.~1~"), "old");
  }
}

TEST(Destination, LeavesNoBackupWhereTheOldFileStays) {
  for (const int error : {0, EPERM}) {
    const TemporaryFolder folder;
    std::vector<Failure> failing = {{"renameat", EIO}};
    if (error != 0) failing.push_back({"linkat", error});
    EXPECT_THROW(WriteInPlace(folder, failing), kit::IoError);
    EXPECT_THAT(folder.Names(), ElementsAre("show"));
    EXPECT_EQ(zuna_test::FileText(folder / "show"), "old");
  }
}

TEST(Destination, LeavesTheBackupWhereTheNewFileHasItsPlace) {
  for (const int error : {0, EPERM}) {
    const TemporaryFolder folder;
    std::vector<Failure> failing = {{"unlinkat", EIO, 0}};
    if (error != 0) failing.push_back({"linkat", error});
    try {
      WriteInPlace(folder, failing);
    } catch (const kit::IoError&) {  // A private folder is left.
    }
    EXPECT_EQ(zuna_test::FileText(folder / "show.~1~"), "old");
  }
}

TEST(Destination, ReplacesNothingWhereTheCheckFails) {
  const TemporaryFolder folder;
  const std::string path = folder.Put("show", "old");
  Destination destination({path, true}, {});
  EXPECT_THROW(destination.Write(zuna_test::FromText("new"), [] { throw std::runtime_error("changed"); }),
               std::runtime_error);
  EXPECT_EQ(zuna_test::FileText(path), "old");
}

}  // namespace
}  // namespace zuna_cli
