#include "kit/path.h"

#include <gtest/gtest.h>

namespace {

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
