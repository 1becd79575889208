// The table of file versions, and what is decided by it.

#include "platform/core/file/versions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "platform/core/log/file.h"
#include "platform/core/show/file.h"

namespace zuna_test {

namespace {

using cmn::FileVersion;
using zuna_core::FileKind;
using zuna_core::Layout;

/// Neighbours of the versions that there are, and the legacy version.
const std::vector<FileVersion> kUnknown{{0, 0}, {0, 1}, {1, 3}, {2, 1}, {3, 0}, {255, 255}};

TEST(VersionsTest, GivesEachVersionItsLayoutAndChecksum) {
  EXPECT_EQ(zuna_core::LayoutOf({1, 0}), Layout::kFixed);
  EXPECT_EQ(zuna_core::LayoutOf({1, 1}), Layout::kFixed);
  EXPECT_EQ(zuna_core::LayoutOf({1, 2}), Layout::kCompact);
  EXPECT_EQ(zuna_core::LayoutOf({2, 0}), Layout::kText);
  EXPECT_FALSE(zuna_core::HasChecksum({1, 0}));
  EXPECT_TRUE(zuna_core::HasChecksum({1, 1}));
  EXPECT_TRUE(zuna_core::HasChecksum({1, 2}));
  EXPECT_FALSE(zuna_core::HasChecksum({2, 0}));
}

TEST(VersionsTest, TellsBinaryVersionsOfAKindFromOthers) {
  EXPECT_TRUE(zuna_core::IsBinary(FileKind::kShow, {1, 0}));
  EXPECT_FALSE(zuna_core::IsBinary(FileKind::kLog, {1, 0}));
  for (const FileKind kind : {FileKind::kShow, FileKind::kLog}) {
    EXPECT_TRUE(zuna_core::IsBinary(kind, {1, 1}));
    EXPECT_TRUE(zuna_core::IsBinary(kind, {1, 2}));
    EXPECT_FALSE(zuna_core::IsBinary(kind, {2, 0}));
    for (const FileVersion version : kUnknown) {
      EXPECT_FALSE(zuna_core::IsBinary(kind, version)) << cmn::VersionText(version);
    }
  }
}

TEST(VersionsTest, HasNoLayoutForAnUnknownVersion) {
  for (const FileVersion version : kUnknown) {
    EXPECT_THROW(zuna_core::LayoutOf(version), std::invalid_argument) << cmn::VersionText(version);
  }
  try {
    zuna_core::HasChecksum({1, 3});
    FAIL() << "no exception";
  } catch (const std::invalid_argument& error) {
    EXPECT_STREQ(error.what(), "there is no file version 1.3");
  }
}

TEST(VersionsTest, HasNoBinaryFieldsInTheTextForm) {
  zuna_core::ByteCounter counter;
  try {
    zuna_core::EncodeShow({}, {2, 0}, counter);
    FAIL() << "no exception";
  } catch (const std::invalid_argument& error) {
    EXPECT_STREQ(error.what(), "file version 2.0 is not binary");
  }
  zuna_core::ByteReader in("", 0);
  EXPECT_THROW(zuna_core::DecodeLog(in, {2, 0}), std::invalid_argument);
}

}  // namespace

}  // namespace zuna_test
