// The formulas of a timeline.

#include "TL/timeline.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

TEST(Tempo, TickTimeIsSecondsOfOneTick) {
  EXPECT_EQ((TL::Tempo{0, 500000}.tick_time(480)), (500000 / 1e6) / 480);
}

TEST(Tempo, EveryWholeTempoSurvivesItsMicroseconds) {
  for (int clocks : {6, 8, 12, 16, 24, 36, 48, 96}) {
    for (int bpm = 1; bpm <= 500; ++bpm) {
      const auto microseconds = static_cast<std::uint32_t>(std::lround(1.44e9 / (bpm * clocks)));
      const TL::Tempo tempo{0, microseconds};
      EXPECT_EQ(tempo.bpm(static_cast<unsigned char>(clocks)), bpm) << clocks << " clocks";
    }
  }
}

TEST(Tempo, TempoThatIsNotWholeIsKeptAsItIs) {
  EXPECT_DOUBLE_EQ((TL::Tempo{0, 545000}.bpm(24)), 1.44e9 / (545000.0 * 24));
}

TEST(Tempo, LessThanHalfAClickAMinuteIsKeptAsItIs) {
  EXPECT_DOUBLE_EQ((TL::Tempo{0, 180000000}.bpm(24)), 1.44e9 / (180000000.0 * 24));
  EXPECT_DOUBLE_EQ((TL::Tempo{0, 4294967295}.bpm(255)), 1.44e9 / (4294967295.0 * 255));
}

TEST(Tempo, WithoutMicrosecondsOrClocksIsInfinitelyFast) {
  EXPECT_TRUE(std::isinf(TL::Tempo{}.bpm(24)));
  EXPECT_TRUE(std::isinf((TL::Tempo{0, 500000}.bpm(0))));
}

TEST(Meter, ThirtySecondsPerClickAreTheInverseOfClocks) {
  EXPECT_EQ((TL::Meter{0, 4, 4, 24, 8}.notated_32_per_click()), 8);
  EXPECT_EQ((TL::Meter{0, 6, 8, 36, 8}.notated_32_per_click()), 12);
  EXPECT_EQ((TL::Meter{0, 6, 8, 9, 8}.notated_32_per_click()), 3);
}

TEST(Meter, ThirtySecondsPerClickRoundHalfUpAndKeepEightBits) {
  EXPECT_EQ((TL::Meter{0, 4, 4, 3, 4}.notated_32_per_click()), 1);   // 0.5
  EXPECT_EQ((TL::Meter{0, 4, 4, 11, 1}.notated_32_per_click()), 0);  // 0.458…
  EXPECT_EQ((TL::Meter{0, 4, 4, 255, 255}.notated_32_per_click()), 2709 % 256);
}

TEST(BarsBeats, KeepsAtMostSevenBytes) {
  TL::BarsBeats entry;
  entry.bar_number("1234567");
  EXPECT_STREQ(entry.bar_number(), "1234567");
  entry.bar_number("12345678");
  EXPECT_STREQ(entry.bar_number(), "1234567");
  entry.bar_number("");
  EXPECT_STREQ(entry.bar_number(), "");
}

TEST(BarsBeats, EndsAtTheFirstNul) {
  TL::BarsBeats entry;
  entry.bar_number(
      std::string("12\0"
                  "3456789",
                  10));
  EXPECT_STREQ(entry.bar_number(), "12");
  TL::BarsBeats same;
  same.bar_number("12");
  EXPECT_EQ(entry, same);
}

TEST(BarsBeats, NeverCutsInsideACharacter) {
  TL::BarsBeats entry;
  entry.bar_number("123456\xC3\xA9");  // é would stand at bytes 7 and 8
  EXPECT_STREQ(entry.bar_number(), "123456");
  entry.bar_number("1234\xF0\x9D\x84\x9E");  // a G clef of four bytes
  EXPECT_STREQ(entry.bar_number(), "1234");
  entry.bar_number("123456\xA9\xA9");  // not UTF-8, so there is no character to keep whole
  EXPECT_STREQ(entry.bar_number(), "123456\xA9");
}

}  // namespace
