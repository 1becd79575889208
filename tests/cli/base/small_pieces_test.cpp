#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/base/tally.h"
#include "cli/base/version_text.h"
#include "cli/midi/file_names.h"

namespace zuna_cli {
namespace {

TEST(VersionText, IsReadAndWritten) {
  EXPECT_EQ(ParseVersion("1.2"), (cmn::FileVersion{1, 2}));
  EXPECT_EQ(ParseVersion("255.0"), (cmn::FileVersion{255, 0}));
  EXPECT_EQ(VersionText({1, 10}), "1.10");
  EXPECT_TRUE(ParseVersion(kDefaultVersion));
  for (const char* text :
       {"", ".", "1", "1.", ".2", "1.2.3", "-1.2", "+1.2", " 1.2", "1.2 ", "1.256", "a.b"}) {
    EXPECT_FALSE(ParseVersion(text)) << text;
  }
}

TEST(Tally, CountsByKind) {
  Tally tally;
  EXPECT_TRUE(tally.empty());
  tally.Add("lyric", "lyrics", 0);
  EXPECT_TRUE(tally.empty());
  tally.Add("text", "texts");
  tally.Add("lyric", "lyrics", 2);
  tally.Add("lyric", "lyrics");
  EXPECT_EQ(tally.ToString(), "1 text, 3 lyrics");
}

TEST(FileNames, AreCleanAndShort) {
  midi::FileNames names;
  EXPECT_EQ(names.Make("1", "Moon River"), "1 Moon River.mid");
  EXPECT_EQ(names.Make("..", "/etc"), "_. _etc.mid");
  EXPECT_EQ(names.Make("", ""), "song.mid");
  EXPECT_EQ(names.Make("2", std::string("a\0\n\x7F\\:b\xFF", 8)), "2 a_____b_.mid");
  EXPECT_EQ(names.Make("4", "Who? *\"Me\"* <1|2>"), "4 Who_ __Me__ _1_2_.mid");
  EXPECT_LE(names.Make("3", std::string(5000, 'x')).size(), 255U);
  EXPECT_LE(names.Make("3", std::string(5000, 'x')).size(), 255U);
}

TEST(FileNames, AreNeverTwoAlike) {
  midi::FileNames names;
  EXPECT_EQ(names.Make("1", "a/b"), "1 a_b.mid");
  EXPECT_EQ(names.Make("1", "A:B"), "1 A_B (2).mid");
  EXPECT_EQ(names.Make("1", "a_b"), "1 a_b (3).mid");
  EXPECT_EQ(names.Make("1", "a_b (2)"), "1 a_b (2) (2).mid");
}

}  // namespace
}  // namespace zuna_cli
