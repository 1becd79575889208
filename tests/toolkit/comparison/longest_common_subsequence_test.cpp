#include "toolkit/comparison/internal/longest_common_subsequence.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace zuna_toolkit {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

using Sequence = std::vector<unsigned>;

TEST(LongestCommonSubsequence, GivesTheIndexesOnBothSides) {
  EXPECT_THAT(LongestCommonSubsequence({5, 1, 2, 6, 3}, {1, 7, 2, 3}),
              ElementsAre(Pair(1, 0), Pair(2, 2), Pair(4, 3)));
  EXPECT_THAT(LongestCommonSubsequence({1, 7, 2, 3}, {5, 1, 2, 6, 3}),
              ElementsAre(Pair(0, 1), Pair(2, 2), Pair(3, 4)));
  EXPECT_THAT(LongestCommonSubsequence({1, 2}, {3, 4}), IsEmpty());
  EXPECT_THAT(LongestCommonSubsequence({}, {1}), IsEmpty());
  EXPECT_THAT(LongestCommonSubsequence({1}, {}), IsEmpty());
}

/// By the table of all beginnings of both sequences.
std::size_t LengthByTable(const Sequence& a, const Sequence& b) {
  std::vector<std::vector<std::size_t>> lengths(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i < a.size(); ++i) {
    for (std::size_t j = 0; j < b.size(); ++j) {
      lengths[i + 1][j + 1] =
          a[i] == b[j] ? lengths[i][j] + 1 : std::max(lengths[i][j + 1], lengths[i + 1][j]);
    }
  }
  return lengths[a.size()][b.size()];
}

TEST(LongestCommonSubsequence, IsCommonInOrderAndLongest) {
  std::mt19937 random(1);
  for (int round = 0; round < 2000; ++round) {
    Sequence a(random() % 30);
    Sequence b(random() % 30);
    const auto kinds = static_cast<unsigned>(1 + random() % 6);
    for (Sequence* sequence : {&a, &b}) {
      for (unsigned& element : *sequence) element = static_cast<unsigned>(random()) % kinds;
    }
    const auto common = LongestCommonSubsequence(a, b);
    EXPECT_EQ(common.size(), LengthByTable(a, b));
    for (std::size_t i = 0; i < common.size(); ++i) {
      EXPECT_EQ(a.at(common[i].first), b.at(common[i].second));
      if (i == 0) continue;
      EXPECT_LT(common[i - 1].first, common[i].first);
      EXPECT_LT(common[i - 1].second, common[i].second);
    }
  }
}

}  // namespace
}  // namespace zuna_toolkit
