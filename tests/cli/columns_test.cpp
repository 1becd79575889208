#include "cli/terminal/columns.h"

#include <gtest/gtest.h>

namespace zuna_cli {
namespace {

const char* const kScientist = "\U0001F469\u200D\U0001F52C";  // woman, zero-width joiner, microscope
const char* const kFlag = "\U0001F1F8\U0001F1EA";             // two regional indicators
const char* const kHeart = "\u2764\uFE0F";                    // heart, emoji selector
const char* const kWave = "\U0001F44B\U0001F3FD";             // hand, skin tone

TEST(Columns, AreOneForACharacter) {
  EXPECT_EQ(Columns(""), 0U);
  EXPECT_EQ(Columns("Caf\u00E9"), 4U);
  EXPECT_EQ(Columns("\u0416\u03A9\u2026\u266D"), 4U);
}

TEST(Columns, AreTwoForAWideCharacter) {
  EXPECT_EQ(Columns("\u65E5\u672C"), 4U);        // Han
  EXPECT_EQ(Columns("\uFF21\uFF71"), 3U);        // full width, half width
  EXPECT_EQ(Columns("\uD55C"), 2U);              // a Hangul syllable
  EXPECT_EQ(Columns("\u1112\u1161\u11AB"), 2U);  // the same in three letters
}

TEST(Columns, AreNoneForACombiningMark) {
  EXPECT_EQ(Columns("e\u0301"), 1U);
  EXPECT_EQ(Columns("a\u0308\u0323b"), 2U);
}

TEST(Columns, AreTwoForAnEmojiOfSeveralCharacters) {
  for (const char* emoji : {"\U0001F3B5", kScientist, kFlag, kHeart, kWave}) EXPECT_EQ(Columns(emoji), 2U);
  EXPECT_EQ(Columns("\u2764"), 1U);  // without the selector
}

TEST(Columns, AreOneForAByteThatIsNoCharacter) {
  EXPECT_EQ(Columns("a\xFF\xE2\x82"), 4U);
  EXPECT_EQ(Columns("\xF0\x9F\x8E"), 3U);
}

TEST(CutToColumns, KeepsATextThatFits) {
  EXPECT_EQ(CutToColumns("", 1), "");
  EXPECT_EQ(CutToColumns("Opera", 5), "Opera");
  EXPECT_EQ(CutToColumns("e\u0301", 1), "e\u0301");
}

TEST(CutToColumns, EndsInAnEllipsis) {
  EXPECT_EQ(CutToColumns("Opera", 4), "Ope\u2026");
  EXPECT_EQ(CutToColumns("Opera", 1), "\u2026");
}

TEST(CutToColumns, CutsBetweenClusters) {
  EXPECT_EQ(CutToColumns("\u65E5\u672C\u8A9E", 5), "\u65E5\u672C\u2026");
  EXPECT_EQ(CutToColumns("\u65E5\u672C\u8A9E", 4),
            "\u65E5\u2026");  // three columns: half a character is none
  EXPECT_EQ(CutToColumns("ae\u0301io", 3), "ae\u0301\u2026");
  for (const std::string emoji : {kScientist, kFlag, kHeart, kWave}) {
    EXPECT_EQ(CutToColumns(emoji + emoji, 3), emoji + "\u2026");
    EXPECT_EQ(CutToColumns(emoji + emoji, 2), "\u2026");
  }
  EXPECT_EQ(CutToColumns("a\xFF\xFE", 2), "a\u2026");
}

}  // namespace
}  // namespace zuna_cli
