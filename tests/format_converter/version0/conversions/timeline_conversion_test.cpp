#include "format_converter/version0/conversions/timeline_conversion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

#include "TL/timeline.h"
#include "format_converter/version0/containers/timeline.h"
#include "tests/format_converter/support/errors.h"
#include "tests/support/bytes.h"

namespace {

using testing::ElementsAre;
using version0::RMeter;
using version0::RTempo;
using version0::Timeline;
using zuna_test::ExactMessageOf;
using zuna_test::MessageOf;

constexpr unsigned short kDivision = 480;

/// A legacy tempo of 120 quarter notes a minute at 480 ticks, with a click of a quarter note.
RTempo Tempo120(std::uint32_t time, std::uint8_t per_click = 8, std::uint8_t per_quarter = 8) {
  return {time, static_cast<float>(0.5 / kDivision), per_click, per_quarter, 120};
}

Timeline Legacy(std::vector<RMeter> meters, std::vector<RTempo> tempos) {
  Timeline timeline;
  timeline.meters = std::move(meters);
  timeline.tempos = std::move(tempos);
  return timeline;
}

TL::Timeline Current(std::vector<TL::Meter> meters, std::vector<TL::Tempo> tempos) {
  TL::Timeline timeline;
  timeline.meters = std::move(meters);
  timeline.tempos = std::move(tempos);
  return timeline;
}

TL::Timeline Up(const Timeline& legacy) { return *legacy.get_version_1_0(kDivision); }
Timeline Down(const TL::Timeline& current) { return {current, "12a", 7680, kDivision}; }

constexpr const char* kNoFirstTempo = "Expected RTempo event on first iteration!";

TEST(TimelineUp, TemposOfOneClickShareAMeter) {
  const TL::Timeline up = Up(Legacy({{0, 4, 4}}, {Tempo120(0), Tempo120(960)}));
  EXPECT_THAT(up.meters, ElementsAre(TL::Meter{0, 4, 4, 24, 8}));
  EXPECT_THAT(up.tempos, ElementsAre(TL::Tempo{0, 500000}, TL::Tempo{960, 500000}));
}

TEST(TimelineUp, TempoWithAnotherClickBeginsAMeterOfTheSameSignature) {
  const TL::Timeline up =
      Up(Legacy({{0, 6, 8}}, {Tempo120(0), Tempo120(960, 12), Tempo120(1440, 12), Tempo120(1920)}));
  EXPECT_THAT(up.meters, ElementsAre(TL::Meter{0, 6, 8, 24, 8}, TL::Meter{960, 6, 8, 36, 8},
                                     TL::Meter{1920, 6, 8, 24, 8}));
  EXPECT_EQ(up.tempos.size(), 4U);
}

TEST(TimelineUp, TempoWithAnotherQuarterBeginsAMeterToo) {
  const TL::Timeline up = Up(Legacy({{0, 4, 4}}, {Tempo120(0), Tempo120(960, 16, 16)}));
  EXPECT_THAT(up.meters, ElementsAre(TL::Meter{0, 4, 4, 24, 8}, TL::Meter{960, 4, 4, 24, 16}));
}

TEST(TimelineUp, LaterMeterWithoutATempoTakesTheLastClick) {
  const TL::Timeline up = Up(Legacy({{0, 4, 4}, {1920, 3, 4}}, {Tempo120(0), Tempo120(960, 12)}));
  EXPECT_THAT(up.meters, ElementsAre(TL::Meter{0, 4, 4, 24, 8}, TL::Meter{960, 4, 4, 36, 8},
                                     TL::Meter{1920, 3, 4, 36, 8}));
}

TEST(TimelineUp, FirstMeterStandsAtItsFirstTempo) {
  EXPECT_THAT(Up(Legacy({{0, 4, 4}}, {Tempo120(100)})).meters, ElementsAre(TL::Meter{100, 4, 4, 24, 8}));
}

TEST(TimelineUp, LaterMeterStandsAtItsFirstTempo) {
  const TL::Timeline up = Up(Legacy({{0, 4, 4}, {960, 3, 4}}, {Tempo120(0), Tempo120(1000)}));
  EXPECT_THAT(up.meters, ElementsAre(TL::Meter{0, 4, 4, 24, 8}, TL::Meter{1000, 3, 4, 24, 8}));
}

TEST(TimelineUp, TempoBelongsToTheMeterAtItsOwnTime) {
  const TL::Timeline up =
      Up(Legacy({{0, 4, 4}, {960, 3, 4}}, {Tempo120(0), Tempo120(959), Tempo120(960, 12)}));
  EXPECT_THAT(up.meters, ElementsAre(TL::Meter{0, 4, 4, 24, 8}, TL::Meter{960, 3, 4, 36, 8}));
}

TEST(TimelineUp, TempoAtTheLastTickBelongsToTheLastMeter) {
  EXPECT_EQ(Up(Legacy({{0, 4, 4}}, {Tempo120(0), Tempo120(0xFFFFFFFF)})).tempos.size(), 2U);
}

TEST(TimelineUp, TemposBeforeTheFirstMeterAreDropped) {
  const TL::Timeline up = Up(Legacy({{480, 4, 4}}, {Tempo120(0), Tempo120(480)}));
  EXPECT_THAT(up.tempos, ElementsAre(TL::Tempo{480, 500000}));
  EXPECT_EQ(ExactMessageOf<std::logic_error>([] {
              Up(Legacy({{480, 4, 4}}, {Tempo120(0)}));
            }),
            kNoFirstTempo);
  EXPECT_EQ(MessageOf<std::logic_error>([] {
              Up(Legacy({{480, 4, 4}, {960, 3, 4}}, {Tempo120(0), Tempo120(960)}));
            }),
            kNoFirstTempo);
}

TEST(TimelineUp, NextMeterAtTimeZeroLeavesTheRangeOpen) {
  const TL::Timeline up = Up(Legacy({{0, 4, 4}, {0, 3, 4}}, {Tempo120(0), Tempo120(960)}));
  EXPECT_EQ(up.tempos.size(), 4U) << "both meters have both tempos";
}

TEST(TimelineUp, MetersOutOfOrderHaveAnEmptyRange) {
  const TL::Timeline up = Up(Legacy({{0, 4, 4}, {960, 3, 4}, {480, 2, 4}}, {Tempo120(0), Tempo120(500)}));
  EXPECT_THAT(up.meters, ElementsAre(TL::Meter{0, 4, 4, 24, 8}, TL::Meter{960, 3, 4, 24, 8},
                                     TL::Meter{500, 2, 4, 24, 8}));
}

TEST(TimelineUp, TemposOutOfOrderAreFoundByBisection) {
  std::vector<RTempo> tempos;
  for (const std::uint32_t time : {500U, 0U, 700U, 50U, 20U, 900U}) tempos.push_back(Tempo120(time));
  std::vector<std::uint32_t> times;
  for (const TL::Tempo& tempo : Up(Legacy({{0, 4, 4}, {100, 3, 4}}, tempos)).tempos)
    times.push_back(tempo.time);
  EXPECT_THAT(times, ElementsAre(500, 0, 700, 50, 20, 900)) << "the second meter begins at the last of them";
  times.clear();
  for (const TL::Tempo& tempo : Up(Legacy({{0, 4, 4}, {600, 3, 4}, {60, 2, 4}}, tempos)).tempos)
    times.push_back(tempo.time);
  EXPECT_THAT(times, ElementsAre(500, 0, 700, 50, 20, 900)) << "the third meter too";
}

TEST(TimelineUp, KeepsTheLow32BitsOfTheMicroseconds) {
  const auto microseconds = [](float seconds_per_tick) {
    return Up(Legacy({{0, 4, 4}}, {{0, seconds_per_tick, 8, 8, 120}})).tempos.at(0).microseconds;
  };
  EXPECT_EQ(microseconds(16), 3'385'032'704U) << "7,680,000,000 less 2^32";
  EXPECT_EQ(microseconds(-0x1p-5F), 0U - 15'000'000U);
}

TEST(TimelineUp, WithoutMetersIsRefused) {
  EXPECT_EQ(ExactMessageOf<std::logic_error>([] { Up(Legacy({}, {Tempo120(0)})); }),
            "A timeline without meters cannot be converted: add a meter at its start");
}

TEST(TimelineUp, CarriesTheOtherLists) {
  Timeline legacy = Legacy({{0, 4, 4}}, {Tempo120(0)});
  legacy.bars_beats = {{0, "1", 3}, {1920, "2 long label", 0}};
  legacy.keys = {{0, -5, 255}};
  legacy.page_nums = {{0, 65535}};
  const TL::Timeline up = Up(legacy);
  ASSERT_EQ(up.bars_beats.size(), 2U);
  EXPECT_EQ(up.bars_beats[0].tag, 3);
  EXPECT_STREQ(up.bars_beats[0].bar_number(), "1");
  EXPECT_EQ(up.bars_beats[1].time, 1920U);
  EXPECT_STREQ(up.bars_beats[1].bar_number(), "2 long ");
  EXPECT_THAT(up.keys, ElementsAre(TL::Key{0, -5, 255}));
  EXPECT_THAT(up.page_numbers, ElementsAre(TL::PageNumber{0, 65535}));
}

TEST(TimelineDown, ClickGoesIntoEveryTempo) {
  const Timeline down = Down(Current({{0, 6, 8, 36, 8}}, {{0, 500000}, {960, 545455}}));
  EXPECT_EQ(down.name, "12a");
  EXPECT_EQ(down.song_length, 7680U);
  EXPECT_THAT(down.meters, ElementsAre(RMeter(0, 6, 8)));
  ASSERT_EQ(down.tempos.size(), 2U);
  EXPECT_EQ(down.tempos[0].notated_32_per_click, 12);
  EXPECT_EQ(down.tempos[0].notated_32_per_quarter, 8);
  EXPECT_EQ(down.tempos[0].bpm, 80) << "clicks of a dotted quarter, not quarters";
  EXPECT_EQ(down.tempos[0].seconds_per_tick, static_cast<float>(0.5 / kDivision));
  EXPECT_EQ(down.tempos[1].seconds_per_tick, static_cast<float>(0.545455 / kDivision));
  EXPECT_EQ(down.tempos[1].bpm, 73);
}

TEST(TimelineDown, LaterMeterWithTheSameClickNeedsNoTempo) {
  const Timeline down = Down(Current({{0, 4, 4, 24, 8}, {1920, 3, 4, 24, 8}}, {{0, 500000}}));
  EXPECT_THAT(down.meters, ElementsAre(RMeter(0, 4, 4), RMeter(1920, 3, 4)));
  EXPECT_EQ(down.tempos.size(), 1U);
}

TEST(TimelineDown, LaterMeterWithAnotherClickRepeatsTheTempo) {
  const Timeline down = Down(
      Current({{0, 4, 4, 24, 8}, {1920, 6, 8, 36, 8}, {3840, 9, 8, 36, 8}}, {{0, 500000}, {960, 600000}}));
  ASSERT_EQ(down.tempos.size(), 3U) << "one at 1920, none at 3840";
  EXPECT_EQ(down.tempos[2].time, 1920U);
  EXPECT_EQ(down.tempos[2].notated_32_per_click, 12);
  EXPECT_EQ(down.tempos[2].seconds_per_tick, down.tempos[1].seconds_per_tick);
  EXPECT_EQ(down.tempos[2].bpm, down.tempos[1].bpm) << "the clicks a minute are those of the repeated tempo";
}

TEST(TimelineDown, LaterMeterWithAnotherQuarterRepeatsTheTempo) {
  const Timeline down = Down(Current({{0, 4, 4, 24, 8}, {1920, 4, 4, 12, 16}}, {{0, 500000}}));
  ASSERT_EQ(down.tempos.size(), 2U);
  EXPECT_EQ(down.tempos[1].notated_32_per_click, 8);
  EXPECT_EQ(down.tempos[1].notated_32_per_quarter, 16);
}

TEST(TimelineDown, FirstMeterNeedsATempo) {
  EXPECT_EQ(ExactMessageOf<std::logic_error>([] { Down(Current({{0, 4, 4, 24, 8}}, {})); }), kNoFirstTempo);
  EXPECT_EQ(MessageOf<std::logic_error>([] {
              Down(Current({{480, 4, 4, 24, 8}}, {{0, 500000}}));
            }),
            kNoFirstTempo);
  EXPECT_EQ(ExactMessageOf<std::logic_error>([] {
              Down(Current({}, {{0, 500000}}));
            }),
            "A timeline without meters cannot be converted: add a meter at its start");
}

TEST(TimelineDown, TemposBeforeTheFirstMeterAreDropped) {
  const Timeline down = Down(Current({{480, 4, 4, 24, 8}}, {{0, 600000}, {479, 400000}, {480, 500000}}));
  EXPECT_THAT(down.tempos, ElementsAre(Tempo120(480)));
  const TL::Timeline later = Current({{480, 4, 4, 24, 8}, {960, 3, 4, 36, 8}}, {{0, 600000}, {480, 500000}});
  EXPECT_THAT(Down(later).tempos, ElementsAre(Tempo120(480), Tempo120(960, 12)));
}

TEST(TimelineDown, WholeTemposStayWhole) {
  const Timeline down = Down(Current({{0, 4, 4, 24, 8}}, {{0, 545455}}));
  EXPECT_EQ(down.tempos[0].bpm, 110);
  EXPECT_THAT(Up(down).tempos, ElementsAre(TL::Tempo{0, 545455}));
}

TEST(TimelineDown, TempoLosesItsFraction) {
  // 502000 microseconds for a quarter note of 24 clocks are 119.52 clicks a minute.
  EXPECT_EQ(Down(Current({{0, 4, 4, 24, 8}}, {{0, 502000}})).tempos[0].bpm, 119);
}

TEST(TimelineDown, TempoThatDoesNotFitWraps) {
  // 720 microseconds for a quarter note of 24 clocks are 83333.3 clicks a minute.
  EXPECT_EQ(Down(Current({{0, 4, 4, 24, 8}}, {{0, 720}})).tempos[0].bpm, 83333 - 65536);
}

TEST(TimelineDown, TempoWithoutAValueIsZero) {
  EXPECT_EQ(Down(Current({{0, 4, 4, 24, 8}}, {{0, 0}})).tempos[0].bpm, 0);
  EXPECT_EQ(Down(Current({{0, 4, 4, 0, 8}}, {{0, 500000}})).tempos[0].bpm, 0);
}

TEST(TimelineDown, NarrowsTheOtherListsByTruncation) {
  TL::Timeline current = Current({{0, 4, 4, 24, 8}}, {{0, 500000}});
  TL::BarsBeats bar;
  bar.time = 5;
  bar.tag = 6;
  bar.bar_number("1234567");
  current.bars_beats = {bar};
  current.keys = {{0, -1, 1}, {480, 0x1203, 0x0102}};
  current.page_numbers = {{0, 65537}};
  const Timeline down = Down(current);
  EXPECT_THAT(down.bars_beats, ElementsAre(version0::RBarsBeats(5, "1234567", 6)));
  EXPECT_THAT(down.keys, ElementsAre(version0::RKey(0, -1, 1), version0::RKey(480, 3, 2)));
  EXPECT_THAT(down.page_nums, ElementsAre(version0::RPageNum(0, 1)));
}

TEST(TimelineConversion, DivisionOfZeroHasDefinedResults) {
  const Timeline down(Current({{0, 4, 4, 24, 8}}, {{0, 500000}, {1, 0}}), "1", 0, 0);
  EXPECT_EQ(down.tempos[0].seconds_per_tick, std::numeric_limits<float>::infinity());
  EXPECT_EQ(down.get_version_1_0(0)->tempos[0].microseconds, 0U);
}

constexpr const char* kTooManyTempos =
    "The meters of a timeline are in disorder and would repeat its tempos too often";

/// Meters and tempos all at time 0: each meter but the last has every tempo, and so has the last.
Timeline LegacyAtZero(std::size_t meters, std::size_t tempos) {
  return Legacy(std::vector(meters, RMeter(0, 4, 4)), std::vector(tempos, Tempo120(0)));
}
TL::Timeline CurrentAtZero(std::size_t meters, std::size_t tempos) {
  return Current(std::vector(meters, TL::Meter{0, 4, 4, 24, 8}), std::vector(tempos, TL::Tempo{0, 500000}));
}

TEST(TimelineConversion, AFewMetersAtOneTimeRepeatTheirTempos) {
  EXPECT_EQ(Up(LegacyAtZero(33, 33)).tempos.size(), 33U * 33);
  EXPECT_EQ(Down(CurrentAtZero(33, 33)).tempos.size(), 33U * 33);
}

TEST(TimelineConversion, UpTo4096TemposAreAlwaysTaken) {
  EXPECT_EQ(Up(LegacyAtZero(64, 64)).tempos.size(), 4096U);
  EXPECT_EQ(Down(CurrentAtZero(64, 64)).tempos.size(), 4096U);
  EXPECT_EQ(ExactMessageOf<std::length_error>([] { Up(LegacyAtZero(17, 241)); }), kTooManyTempos) << "4097";
  EXPECT_EQ(ExactMessageOf<std::length_error>([] { Down(CurrentAtZero(17, 241)); }), kTooManyTempos);
}

TEST(TimelineConversion, UpToTwiceTheEntriesAreTaken) {
  // The first meter has the last tempos, the other two have all of them: 8000 tempos and the last ones again,
  // where twice the entries are 8006.
  const auto legacy = [](std::size_t last) {
    Timeline timeline = Legacy({{1, 4, 4}, {0, 4, 4}, {0, 4, 4}}, std::vector(4000 - last, Tempo120(0)));
    timeline.tempos.insert(timeline.tempos.end(), last, Tempo120(1));
    return timeline;
  };
  EXPECT_EQ(Up(legacy(6)).tempos.size(), 8006U);
  EXPECT_EQ(ExactMessageOf<std::length_error>([&] { Up(legacy(7)); }), kTooManyTempos);
  const auto current = [](std::size_t last) {
    TL::Timeline timeline = CurrentAtZero(3, 4000 - last);
    timeline.meters[0].time = 1;
    timeline.tempos.insert(timeline.tempos.end(), last, TL::Tempo{1, 500000});
    return timeline;
  };
  EXPECT_EQ(Down(current(6)).tempos.size(), 8006U);
  EXPECT_EQ(ExactMessageOf<std::length_error>([&] { Down(current(7)); }), kTooManyTempos);
}

TEST(TimelineConversion, EntriesOfEveryListAreCounted) {
  // 17 meters with 241 tempos each: 4097 tempos, and with 1791 other entries 2049 entries.
  Timeline legacy = LegacyAtZero(17, 241);
  legacy.bars_beats.assign(597, {0, "1", 0});
  legacy.keys.assign(597, {0, 0, 0});
  legacy.page_nums.assign(597, {0, 1});
  EXPECT_EQ(Up(legacy).tempos.size(), 4097U);
  legacy.page_nums.pop_back();
  EXPECT_EQ(ExactMessageOf<std::length_error>([&] { Up(legacy); }), kTooManyTempos);
  TL::Timeline current = CurrentAtZero(17, 241);
  current.bars_beats.resize(597);
  current.keys.resize(597);
  current.page_numbers.resize(597);
  EXPECT_EQ(Down(current).tempos.size(), 4097U);
  current.page_numbers.pop_back();
  EXPECT_EQ(ExactMessageOf<std::length_error>([&] { Down(current); }), kTooManyTempos);
}

TEST(TimelineConversion, RepeatedTemposCount) {
  // 90 meters at time 0 with 45 tempos each: 4050. Each of the next 47 meters repeats the last tempo: 4097.
  TL::Timeline current = CurrentAtZero(90, 45);
  for (std::uint32_t time = 1; time <= 46; ++time) {
    current.meters.push_back({time, 4, 4, static_cast<std::uint8_t>(time % 2 == 0 ? 24 : 48), 8});
  }
  EXPECT_EQ(Down(current).tempos.size(), 4096U);
  current.meters.push_back({47, 4, 4, 48, 8});
  EXPECT_EQ(ExactMessageOf<std::length_error>([&] { Down(current); }), kTooManyTempos);
}

TEST(TimelineConversion, MetersInDisorderCannotExhaustTheMemory) {
  EXPECT_EQ(MessageOf<std::length_error>([] { Up(LegacyAtZero(3000, 3000)); }), kTooManyTempos);
  EXPECT_EQ(MessageOf<std::length_error>([] { Down(CurrentAtZero(3000, 3000)); }), kTooManyTempos);
}

TEST(TimelineConversion, ManyMetersInOrderRepeatTemposAsOftenAsTheClickChanges) {
  std::vector<TL::Meter> meters;
  for (std::uint32_t time = 0; time < 10'000; ++time) {
    meters.push_back({time, 4, 4, static_cast<std::uint8_t>(time % 2 == 0 ? 24 : 48), 8});
  }
  EXPECT_EQ(Down(Current(meters, {{0, 500000}})).tempos.size(), 10'000U);
}

TEST(NeedNewMeter, ComparesClickAndQuarter) {
  const TL::Meter meter{0, 4, 4, 24, 8};
  EXPECT_FALSE(version0::need_new_meter(meter, Tempo120(480, 8, 8)));
  EXPECT_TRUE(version0::need_new_meter(meter, Tempo120(480, 12, 8)));
  EXPECT_TRUE(version0::need_new_meter(meter, Tempo120(480, 16, 16)));
}

TEST(NeedNewTempo, ComparesClickAndQuarter) {
  const RTempo tempo = Tempo120(0);
  EXPECT_FALSE(version0::need_new_tempo(tempo, TL::Meter{480, 3, 4, 24, 8}));
  EXPECT_TRUE(version0::need_new_tempo(tempo, TL::Meter{480, 6, 8, 36, 8}));
  EXPECT_TRUE(version0::need_new_tempo(tempo, TL::Meter{480, 6, 8, 12, 16}));
}

}  // namespace
