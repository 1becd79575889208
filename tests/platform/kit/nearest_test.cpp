#include "kit/nearest.h"

#include <gtest/gtest.h>

namespace kit {
namespace {

TEST(EditDistance, CountsChanges) {
  EXPECT_EQ(EditDistance("", ""), 0U);
  EXPECT_EQ(EditDistance("info", "info"), 0U);
  EXPECT_EQ(EditDistance("", "up"), 2U);
  EXPECT_EQ(EditDistance("up", ""), 2U);
  EXPECT_EQ(EditDistance("conver", "convert"), 1U);  // inserted
  EXPECT_EQ(EditDistance("listt", "list"), 1U);      // removed
  EXPECT_EQ(EditDistance("prant", "print"), 1U);     // replaced
  EXPECT_EQ(EditDistance("dwon", "down"), 1U);       // exchanged
  EXPECT_EQ(EditDistance("kitten", "sitting"), 3U);  // the usual example
  EXPECT_EQ(EditDistance("export", "import"), 2U);
}

TEST(EditDistance, ChangesNoPartTwice) {
  EXPECT_EQ(EditDistance("ca", "abc"), 3U);  // not 2, by an exchange and an insertion between both
}

TEST(Suggestion, IsTheNearestWord) {
  const std::vector<std::string> known = {"encrypt", "decrypt", "down", "info"};
  EXPECT_EQ(Suggestion("decrypd", known), "; did you mean \"decrypt\"?");
  EXPECT_EQ(Suggestion("dcrypt", known), "; did you mean \"decrypt\"?");
  EXPECT_EQ(Suggestion("ecrypt", known), "; did you mean \"encrypt\"?");  // decrypt is as near
}

TEST(Suggestion, IsNothingWhereMoreThanAThirdWouldChange) {
  EXPECT_EQ(Suggestion("in", {"info"}), "");
  EXPECT_EQ(Suggestion("inf", {"info"}), "; did you mean \"info\"?");
  EXPECT_EQ(Suggestion("exprt1", {"export"}), "; did you mean \"export\"?");
  EXPECT_EQ(Suggestion("exxx1t", {"export"}), "");
  EXPECT_EQ(Suggestion("anything", {}), "");
}

TEST(Suggestion, IsNothingForALongWord) {
  const std::string longest(64, 'w');
  EXPECT_EQ(Suggestion(longest + "w", {longest}), "");
  EXPECT_EQ(Suggestion(longest, {longest + "w"}), "; did you mean \"" + longest + "w\"?");
}

}  // namespace
}  // namespace kit
