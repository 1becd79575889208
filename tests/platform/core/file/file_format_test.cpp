// Kinds, versions and magic bytes of current files.

#include "cmn/file_format.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zuna_test {

namespace {

using cmn::FileKind;
using cmn::FileVersion;
using cmn::ParseVersion;

TEST(FileFormatTest, NamesKindsAndTheirMagicBytes) {
  using namespace std::string_view_literals;
  EXPECT_EQ(cmn::KindName(FileKind::kShow), "show");
  EXPECT_EQ(cmn::KindName(FileKind::kLog), "log");
  EXPECT_EQ(cmn::BinaryMagic(FileKind::kShow), "\0ZSH"sv);
  EXPECT_EQ(cmn::BinaryMagic(FileKind::kLog), "\0ZLG"sv);
  EXPECT_EQ(cmn::kTextFormStart, '{');
}

TEST(FileFormatTest, ListsTheSupportedVersions) {
  EXPECT_THAT(
      cmn::SupportedVersions(FileKind::kShow),
      testing::ElementsAre(FileVersion{1, 0}, FileVersion{1, 1}, FileVersion{1, 2}, FileVersion{2, 0}));
  EXPECT_THAT(cmn::SupportedVersions(FileKind::kLog),
              testing::ElementsAre(FileVersion{1, 1}, FileVersion{1, 2}, FileVersion{2, 0}));
  EXPECT_EQ(cmn::VersionText(cmn::kDefaultVersion), "1.2");
}

TEST(FileFormatTest, ParsesTwoNumbersJoinedByAPoint) {
  EXPECT_EQ(ParseVersion("0.0"), (FileVersion{0, 0}));
  EXPECT_EQ(ParseVersion("1.2"), (FileVersion{1, 2}));
  EXPECT_EQ(ParseVersion("255.10"), (FileVersion{255, 10}));
  EXPECT_EQ(cmn::VersionText({255, 10}), "255.10");
  for (const char* text : {"", ".", "1", "1.", ".1", "1.2.3", "01.2", "1.02", "1,2", "256.0", "0.256", "-1.0",
                           "+1.0", " 1.0", "1.0 ", "1. 0", "a.b", "1.2a"}) {
    EXPECT_FALSE(ParseVersion(text)) << text;
  }
}

}  // namespace

}  // namespace zuna_test
