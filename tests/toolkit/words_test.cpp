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

}  // namespace
}  // namespace zuna_toolkit
