// Text from a file as it appears in messages.

#include "platform/core/bytes/quote.h"

#include <gtest/gtest.h>

namespace {

using zuna_core::Quote;

TEST(Quote, ShowsWhatCanBeRead) {
  EXPECT_EQ(Quote("12a"), "\"12a\"");
  EXPECT_EQ(Quote("é\"\\"), "\"é\\\"\\\\\"");
  EXPECT_EQ(Quote(""), "\"\"");
}

TEST(Quote, SpellsOutWhatCannot) {
  EXPECT_EQ(Quote(std::string_view("a\0\n\x7F", 4)), "\"a\\x00\\x0A\\x7F\"");
  EXPECT_EQ(Quote("a\xC3"), "\"a\\xC3\"");
}

TEST(Quote, CutsLongTextsBetweenCharacters) {
  EXPECT_EQ(Quote(std::string(41, 'a')), "\"" + std::string(40, 'a') + "\"…");
  EXPECT_EQ(Quote(std::string(39, 'a') + "é"), "\"" + std::string(39, 'a') + "\"…");
}

}  // namespace
