#include "format_converter/version0/containers/internal/is_prefix.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

TEST(IsPrefixOf, WalksBothSidesInStep) {
  using Numbers = std::vector<int>;
  std::string walked;
  const auto same = [&](int a, int b) {
    walked += std::to_string(a) + std::to_string(b) + " ";
    return a == b;
  };
  EXPECT_TRUE(version0::is_prefix_of(Numbers{1, 2}, Numbers{1, 2, 3}, same));
  EXPECT_FALSE(version0::is_prefix_of(Numbers{1, 2, 3}, Numbers{1, 2}, same));
  EXPECT_FALSE(version0::is_prefix_of(Numbers{1, 2}, Numbers{4}, same));
  EXPECT_TRUE(version0::is_prefix_of(Numbers{}, Numbers{}, same));
  EXPECT_EQ(walked, "11 22 11 22 14 ");
}

}  // namespace
