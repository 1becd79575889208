#include "toolkit/midi/internal/import_timeline.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace zuna_toolkit::midi {
namespace {

std::vector<std::pair<std::uint32_t, std::string>> LabelsOf(const std::vector<TL::Meter>& meters,
                                                            std::uint16_t division, std::uint32_t length) {
  std::vector<std::pair<std::uint32_t, std::string>> labels;
  for (const TL::BarsBeats& label : MakeBarLabels(meters, division, length)) {
    EXPECT_EQ(label.tag, 0);
    labels.emplace_back(label.time, label.bar_number());
  }
  return labels;
}

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

TEST(BarLabels, StandAtEveryBarBeforeTheEnd) {
  EXPECT_THAT(LabelsOf({{0, 4, 4, 24, 8}}, 480, 3840), ElementsAre(Pair(0, "1"), Pair(1920, "2")));
  EXPECT_THAT(LabelsOf({{0, 4, 4, 24, 8}}, 480, 3841),
              ElementsAre(Pair(0, "1"), Pair(1920, "2"), Pair(3840, "3")));
}

TEST(BarLabels, AreMissingInAnEmptySong) {
  EXPECT_THAT(LabelsOf({{0, 4, 4, 24, 8}}, 480, 0), IsEmpty());
  EXPECT_THAT(LabelsOf({}, 480, 1000), IsEmpty());
}

TEST(BarLabels, BeginAnewWhereTheMeterChanges) {
  EXPECT_THAT(LabelsOf({{0, 4, 4, 24, 8}, {2000, 6, 8, 36, 8}}, 480, 4880),
              ElementsAre(Pair(0, "1"), Pair(1920, "2"), Pair(2000, "3"), Pair(3440, "4")));
}

TEST(BarLabels, IgnoreMetersAfterTheEnd) {
  EXPECT_THAT(LabelsOf({{0, 4, 4, 24, 8}, {2000, 3, 4, 24, 8}}, 480, 1000), ElementsAre(Pair(0, "1")));
}

TEST(BarLabels, KeepTimeInBarsOfBrokenTicks) {
  // 5 ticks of a quarter note and bars of 1/8: 2.5 ticks.
  EXPECT_THAT(LabelsOf({{0, 1, 8, 24, 8}}, 5, 8),
              ElementsAre(Pair(0, "1"), Pair(2, "2"), Pair(5, "3"), Pair(7, "4")));
}

TEST(BarLabels, AreLimited) {
  const auto labels = MakeBarLabels({{0, 1, 128, 24, 8}}, 1, std::numeric_limits<std::uint32_t>::max());
  EXPECT_EQ(labels.size(), kMaxBarLabels);
  EXPECT_STREQ(labels.back().bar_number(), "10000");
}

}  // namespace
}  // namespace zuna_toolkit::midi
