#include "toolkit/words.h"

#include <gtest/gtest.h>

namespace zuna_toolkit {
namespace {

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

TEST(LowerCase, ChangesLettersOfAsciiOnly) {
  EXPECT_EQ(LowerCase("Opera AZ@[ \xC3\x89.LogData"), "opera az@[ \xC3\x89.logdata");
}

TEST(WithCode, EndsWithACode) { EXPECT_EQ(WithCode("a [b]", "wrong-key"), "a [b] [wrong-key]"); }

TEST(NumberText, CutsWhatIsHardlyANumber) {
  EXPECT_EQ(NumberText("12a"), "12a");
  EXPECT_EQ(NumberText(std::string(40, '7')), std::string(40, '7'));
  EXPECT_EQ(NumberText(std::string(41, '7')), std::string(40, '7') + "...");
  EXPECT_EQ(NumberText(std::string(255, '\xFF')), std::string(40, '\xFF') + "...");
  EXPECT_EQ(NumberText(std::string("1\0\x1A\x7F", 4)), "1\\x00\\x1a\\x7f");
  EXPECT_EQ(NumberText(std::string(39, '7') + "\xC3\x89"), std::string(39, '7') + "...");
}

}  // namespace
}  // namespace zuna_toolkit
