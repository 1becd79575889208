#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <stdexcept>

#include "CL/song_log.h"
#include "format_converter/version0/containers/song_log.h"
#include "tests/support/bytes.h"
#include "tests/support/random_legacy_log.h"

namespace {

using version0::SongLogV0;
using zuna_test::Written;

SongLogV0 WithEveryList() {
  SongLogV0 log;
  log.songNumber_ = "12a";
  log.songName_ = "Tune";
  log.songLength_ = 7680;
  log.vamps = {{1, 2, -1}, {3, 4, 2}};
  log.repeats = {{5, 6, 3}};
  log.cuts = {{7, 8, 4}};
  log.clicks = {{9, 10, 5}};
  log.tempo_scales = {{11, 12, 1.5F}};
  log.transposes = {{13, 14, 12}};
  log.caesuras = {version0::XCaesura(15)};
  log.score_markers = {{16, "A"}};
  return log;
}

template <typename Event>
void ExpectPaired(const CL::EventList<Event>& list, std::uint32_t start, std::uint32_t end, double value) {
  ASSERT_FALSE(list.events.empty());
  EXPECT_EQ(list.events[0].StartPosition(), start);
  EXPECT_EQ(list.events[0].EndPosition(), end);
  EXPECT_EQ(list.events[0].value(), value);
  EXPECT_EQ(list.events[0].label, "");
}

TEST(SongLogUp, EveryListGoesToItsCurrentOne) {
  const auto log = WithEveryList().get_version_1_0();
  EXPECT_EQ(log->song_number, "12a");
  EXPECT_EQ(log->song_name, "Tune");
  EXPECT_EQ(log->song_length, 7680U);
  ExpectPaired(*log->vamps, 1, 2, -1);
  EXPECT_EQ(log->vamps->events.at(1).IntValue(), 2);
  ExpectPaired(*log->repeats, 5, 6, 3);
  ExpectPaired(*log->cuts, 7, 8, 4);
  ExpectPaired(*log->clicks, 9, 10, 5);
  ExpectPaired(*log->tempo_scales, 11, 12, 1.5);
  ExpectPaired(*log->transposes, 13, 14, 12);
  EXPECT_EQ(log->caesuras->events.at(0).position, 15U);
  EXPECT_EQ(log->caesuras->events.at(0).second_word, 0U);
  EXPECT_EQ(log->caesuras->events.at(0).label, "");
  EXPECT_EQ(log->markers->events.at(0).position, 16U);
  EXPECT_EQ(log->markers->events.at(0).text, "A");
  EXPECT_EQ(log->markers->events.at(0).label, "");
}

TEST(SongLogUp, WhatTheLegacyFormatLacksIsZeroOrEmpty) {
  const auto log = WithEveryList().get_version_1_0();
  EXPECT_EQ(log->division, 0);
  EXPECT_EQ(log->attacca, 0);
  EXPECT_TRUE(log->fermatas->events.empty());
}

TEST(SongLogUp, ExtendsTheSignOfIntegers) {
  EXPECT_EQ(WithEveryList().get_version_1_0()->vamps->events.at(0).value_bits, 0xFFFFFFFFU);
}

TEST(SongLogUp, NothingIsSortedOrMerged) {
  SongLogV0 log;
  log.cuts = {{9, 10, 1}, {1, 2, 1}, {9, 10, 1}};
  const auto up = log.get_version_1_0();
  const auto& cuts = up->cuts->events;
  ASSERT_EQ(cuts.size(), 3U);
  EXPECT_EQ(cuts[1].start, 1U);
}

TEST(SongLogDown, GivesBackWhatWentUpValuesIncluded) {
  const SongLogV0 log = WithEveryList();
  const SongLogV0 back(*log.get_version_1_0());
  EXPECT_EQ(Written(back), Written(log));
  EXPECT_EQ(back.vamps[0].event_code, '@');
  EXPECT_EQ(back.tempo_scales[0].event_code, 'D');
  EXPECT_EQ(back.caesuras[0].event_code, 'N');
}

TEST(SongLogDown, RandomSongLogsComeBackByteForByte) {
  std::mt19937 random(33);
  for (int i = 0; i < 200; ++i) {
    for (const auto& [number, log] : zuna_test::RandomLegacyLog(random).songs) {
      ASSERT_EQ(Written(SongLogV0(*log.get_version_1_0())), Written(log));
    }
  }
}

TEST(SongLogDown, DropsWhatTheLegacyFormatLacks) {
  const SongLogV0 log = WithEveryList();
  const auto current = log.get_version_1_0();
  current->division = 480;
  current->attacca = 2;
  current->fermatas->events.emplace_back(1, 2, "held", 3);
  current->vamps->events[0].label = "safety";
  EXPECT_EQ(Written(SongLogV0(*current)), Written(log));
}

TEST(SongLogDown, ReservesAsManyEventsAsTheCurrentListHolds) {
  CL::SongLog current("1", "", 0, 0);
  for (int i = 0; i < 3; ++i) {
    current.vamps->events.emplace_back(0, 1, "", 1);
    current.transposes->events.emplace_back(0, 1, "", 1);
    current.tempo_scales->events.emplace_back(0, 1, "", 1.5F);
    current.caesuras->events.emplace_back(0, "");
    current.markers->events.emplace_back(0, "", "A");
  }
  const SongLogV0 log(current);  // lists that grow have room for 4
  EXPECT_EQ(log.vamps.capacity(), 3U);
  EXPECT_EQ(log.transposes.capacity(), 3U);
  EXPECT_EQ(log.tempo_scales.capacity(), 3U);
  EXPECT_EQ(log.caesuras.capacity(), 3U);
  EXPECT_EQ(log.score_markers.capacity(), 3U);
}

TEST(SongLogDown, LogWithoutAListIsRefused) {
  CL::SongLog current("1", "", 0, 0);
  current.cuts = nullptr;
  EXPECT_EQ(zuna_test::MessageOf<std::logic_error>([&] { SongLogV0 log(current); }),
            "A song log that lacks a list of events cannot be converted");
}

TEST(SongLogDown, IntegersKeepTheirLow8Bits) {
  CL::SongLog current("1", "", 0, 0);
  current.vamps->events.emplace_back(0, 1, "", 300);
  current.repeats->events.emplace_back(0, 1, "", -1);
  current.cuts->events.emplace_back(0, 1, "", 128);
  current.clicks->events.emplace_back(0, 1, "", std::numeric_limits<std::int32_t>::min());
  current.transposes->events.emplace_back(0, 1, "", 200);
  const SongLogV0 log(current);
  EXPECT_EQ(log.vamps.at(0).value, 44);
  EXPECT_EQ(log.repeats.at(0).value, -1);
  EXPECT_EQ(log.cuts.at(0).value, -128);
  EXPECT_EQ(log.clicks.at(0).value, 0);
  EXPECT_EQ(log.transposes.at(0).value, -56);
  EXPECT_EQ(log.get_version_1_0()->transposes->events.at(0).IntValue(), -56);
}

TEST(SongLogDown, LeavesOutCaesurasOfAnotherKind) {
  CL::SongLog current("1", "", 0, 0);
  for (const std::uint32_t second_word : {0U, 1U, 2U, 0xFFFFFFFFU}) {
    current.caesuras->events.emplace_back(100 + second_word, "").second_word = second_word;
  }
  const SongLogV0 log(current);
  ASSERT_EQ(log.caesuras.size(), 2U);
  EXPECT_EQ(log.caesuras[0].time, 100U);
  EXPECT_EQ(log.caesuras[1].time, 101U);
  EXPECT_EQ(log.get_version_1_0()->caesuras->events.at(1).second_word, 0U);
}

TEST(SongLogDown, TempoScalesKeepTheirBits) {
  CL::SongLog current("1", "", 0, 0);
  const float values[] = {std::numeric_limits<float>::quiet_NaN(), -std::numeric_limits<float>::infinity(),
                          std::numeric_limits<float>::denorm_min(), -0.0F};
  for (const float value : values) current.tempo_scales->events.emplace_back(0, 1, "", value);
  const SongLogV0 log(current);
  for (std::size_t i = 0; i < std::size(values); ++i) {
    EXPECT_EQ(std::bit_cast<std::uint32_t>(log.tempo_scales.at(i).value),
              std::bit_cast<std::uint32_t>(values[i]));
  }
}

}  // namespace
