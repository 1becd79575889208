// The order of song numbers.

#include "kit/numeric_string_compare.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

using Ordered = std::set<std::string, kit::NumericStringCompare>;

TEST(NumericStringCompare, OrdersNumbersByValue) {
  EXPECT_THAT((Ordered{"10", "2", "1", "12a", "12", "2b", "2a"}),
              testing::ElementsAre("1", "2", "2a", "2b", "10", "12", "12a"));
}

TEST(NumericStringCompare, ComparesDigitRunsOfAnyLength) {
  const kit::NumericStringCompare less;
  EXPECT_TRUE(less("99999999999999999999999999999998", "99999999999999999999999999999999"));
  EXPECT_TRUE(less("18446744073709551615", "18446744073709551616"));
  EXPECT_TRUE(less("a9b", "a10b"));
}

TEST(NumericStringCompare, NeverMergesTextsThatDiffer) {
  EXPECT_THAT((Ordered{"1", "01", "001", "a0", "a00", "", "0"}), testing::SizeIs(7));
  const kit::NumericStringCompare less;
  EXPECT_TRUE(less("01", "1"));
  EXPECT_FALSE(less("1", "01"));
}

TEST(NumericStringCompare, ComparesOtherBytesUnsigned) {
  const kit::NumericStringCompare less;
  EXPECT_TRUE(less("z", "\xC3\xA9"));
  EXPECT_TRUE(less("1", "A"));
  EXPECT_TRUE(less(std::string("\0", 1), "1"));
}

TEST(NumericStringCompare, IsAStrictTotalOrder) {
  std::mt19937 random(1);
  const std::string alphabet = "0019a";
  std::vector<std::string> texts;
  for (int i = 0; i < 60; ++i) {
    std::string text;
    for (auto left = random() % 5; left > 0; --left) text += alphabet[random() % alphabet.size()];
    texts.push_back(text);
  }
  const kit::NumericStringCompare less;
  for (const auto& a : texts) {
    for (const auto& b : texts) {
      EXPECT_EQ(less(a, b) + less(b, a) + (a == b), 1) << a << " / " << b;
      for (const auto& c : texts) {
        EXPECT_TRUE(!less(a, b) || !less(b, c) || less(a, c)) << a << " / " << b << " / " << c;
      }
    }
  }
}

}  // namespace
