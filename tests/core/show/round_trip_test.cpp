#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <utility>

#include "tests/core/show/sample_show.h"
#include "tests/support/random_show.h"
#include "tests/support/show_equality.h"

namespace {

using zuna_test::FirstDifference;
using zuna_test::kVersions;
using zuna_test::ReadShow;
using zuna_test::WriteShow;

class EveryVersion : public testing::TestWithParam<cmn::FileVersion> {};

INSTANTIATE_TEST_SUITE_P(Show, EveryVersion, testing::ValuesIn(kVersions), [](const auto& version) {
  return "Version" + std::to_string(version.param.major) + "_" + std::to_string(version.param.minor);
});

TEST_P(EveryVersion, WritesTheBytesOfTheSample) {
  EXPECT_EQ(WriteShow(zuna_test::SampleShow(), GetParam()), zuna_test::SampleFile(GetParam()));
}

TEST_P(EveryVersion, ReadsTheBytesOfTheSample) {
  EXPECT_EQ(FirstDifference(ReadShow(zuna_test::SampleFile(GetParam())), zuna_test::SampleShow()), "");
}

TEST_P(EveryVersion, HoldsAnEmptyShow) {
  const zuna_midi::ShowData empty;
  EXPECT_EQ(FirstDifference(ReadShow(WriteShow(empty, GetParam())), empty), "");
}

TEST_P(EveryVersion, HoldsAnyShow) {
  std::mt19937 random(1);
  for (int i = 0; i < 300; ++i) {
    zuna_test::ShowOptions options;
    options.wild = i % 2 != 0;
    const zuna_midi::ShowData show = zuna_test::RandomShow(random, options);
    EXPECT_EQ(FirstDifference(ReadShow(WriteShow(show, GetParam())), show), "") << "show " << i;
  }
}

TEST_P(EveryVersion, HoldsMoreThanAWindow) {
  std::mt19937 random(2);
  zuna_test::ShowOptions options;
  options.max_messages = 60000;
  options.max_entries = 9000;
  options.wild = true;
  const zuna_midi::ShowData show = zuna_test::RandomShow(random, options);
  EXPECT_EQ(FirstDifference(ReadShow(WriteShow(show, GetParam())), show), "");
}

TEST_P(EveryVersion, HoldsATextLongerThanAWindow) {
  zuna_midi::ShowData show = zuna_test::SampleShow();
  show.show_name = std::string(200000, '\n') + std::string(70000, 'x');
  EXPECT_EQ(FirstDifference(ReadShow(WriteShow(show, GetParam())), show), "");
  show.show_name += '\xFF';
  EXPECT_EQ(FirstDifference(ReadShow(WriteShow(show, GetParam())), show), "");
}

TEST_P(EveryVersion, ConvertsToEveryOtherWithoutADifference) {
  std::mt19937 random(3);
  zuna_test::ShowOptions options;
  options.wild = true;
  for (int i = 0; i < 50; ++i) {
    const zuna_midi::ShowData show = zuna_test::RandomShow(random, options);
    const zuna_midi::ShowData first = ReadShow(WriteShow(show, GetParam()));
    for (const cmn::FileVersion& to : kVersions) {
      const std::string bytes = WriteShow(first, to);
      EXPECT_EQ(bytes, WriteShow(show, to));
      EXPECT_EQ(FirstDifference(ReadShow(bytes), show), "");
    }
  }
}

TEST_P(EveryVersion, ReadsFromThePositionToTheEndAndLeavesTheStreamUsable) {
  std::istringstream is("before" + zuna_test::SampleFile(GetParam()));
  is.exceptions(std::ios_base::failbit | std::ios_base::badbit | std::ios_base::eofbit);
  is.seekg(6);
  EXPECT_EQ(FirstDifference(zuna_midi::ShowData(is), zuna_test::SampleShow()), "");
  EXPECT_TRUE(is.good());
  is.seekg(0);
  EXPECT_EQ(is.get(), 'b');
}

TEST(ShowEquality, NamesTheFirstDifference) {
  const zuna_midi::ShowData show = zuna_test::SampleShow();
  const auto changed = [](const auto& change) {
    zuna_midi::ShowData other = zuna_test::SampleShow();
    change(*other.songs().begin()->second);
    return other;
  };
  const auto difference = [&](const auto& change) { return FirstDifference(show, changed(change)); };
  EXPECT_EQ(difference([](auto&) {}), "");
  EXPECT_EQ(difference([](auto& song) { song.division = 1; }), "song \"2b\", division");
  EXPECT_EQ(difference([](auto& song) { song.timeline->keys.clear(); }), "song \"2b\", key 0");
  EXPECT_EQ(difference([](auto& song) { song.timeline->meters.emplace_back(); }), "song \"2b\", meter 1");
  EXPECT_EQ(difference([](auto& song) { song.voice_data->GetTrack(300)->reserved = 0; }),
            "song \"2b\", voice 300, reserved field");
  EXPECT_EQ(difference([](auto& song) { song.voice_data->GetTrack(1)->messages[2].first = 0; }),
            "song \"2b\", voice 1, message 2");
}

}  // namespace
