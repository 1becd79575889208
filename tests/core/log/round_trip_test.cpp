#include <gtest/gtest.h>

#include <random>
#include <sstream>

#include "platform/core/bytes/coding.h"
#include "tests/core/log/sample_log.h"
#include "tests/support/log_equality.h"
#include "tests/support/random_log.h"

namespace {

using zuna_test::FirstDifference;
using zuna_test::kLogVersions;
using zuna_test::ReadLog;
using zuna_test::WriteLog;

class EveryLogVersion : public testing::TestWithParam<cmn::FileVersion> {};

INSTANTIATE_TEST_SUITE_P(Log, EveryLogVersion, testing::ValuesIn(kLogVersions), [](const auto& version) {
  return "Version" + std::to_string(version.param.major) + "_" + std::to_string(version.param.minor);
});

TEST_P(EveryLogVersion, WritesTheBytesOfTheSample) {
  EXPECT_EQ(WriteLog(zuna_test::SampleLog(), GetParam()), zuna_test::SampleLogFile(GetParam()));
}

TEST_P(EveryLogVersion, ReadsTheBytesOfTheSample) {
  const CL::ChangeLog log = ReadLog(zuna_test::SampleLogFile(GetParam()));
  EXPECT_EQ(FirstDifference(log, zuna_test::SampleLog()), "");
  EXPECT_EQ(log.file_version, GetParam());
}

TEST_P(EveryLogVersion, HoldsAnEmptyLog) {
  const CL::ChangeLog empty;
  EXPECT_EQ(FirstDifference(ReadLog(WriteLog(empty, GetParam())), empty), "");
}

TEST_P(EveryLogVersion, HoldsAnyLog) {
  std::mt19937 random(1);
  for (int i = 0; i < 500; ++i) {
    const CL::ChangeLog log = zuna_test::RandomLog(random);
    EXPECT_EQ(FirstDifference(ReadLog(WriteLog(log, GetParam())), log), "") << "log " << i;
  }
}

TEST_P(EveryLogVersion, HoldsMoreThanAWindow) {
  std::mt19937 random(2);
  const CL::ChangeLog log = zuna_test::RandomLog(random, {20, 3000});
  const std::string bytes = WriteLog(log, GetParam());
  EXPECT_GT(bytes.size(), 10U * 64 * 1024);
  EXPECT_EQ(FirstDifference(ReadLog(bytes), log), "");
}

TEST_P(EveryLogVersion, ConvertsToEveryOtherWithoutADifference) {
  std::mt19937 random(3);
  for (int i = 0; i < 100; ++i) {
    const CL::ChangeLog log = zuna_test::RandomLog(random);
    const CL::ChangeLog first = ReadLog(WriteLog(log, GetParam()));
    for (const cmn::FileVersion& to : kLogVersions) {
      const std::string bytes = WriteLog(first, to);
      EXPECT_EQ(bytes, WriteLog(log, to));
      EXPECT_EQ(FirstDifference(ReadLog(bytes), log), "");
    }
  }
}

TEST_P(EveryLogVersion, ReadsFromThePositionToTheEndAndLeavesTheStreamUsable) {
  std::istringstream is("before" + zuna_test::SampleLogFile(GetParam()));
  is.exceptions(std::ios_base::failbit | std::ios_base::badbit | std::ios_base::eofbit);
  is.seekg(6);
  EXPECT_EQ(FirstDifference(CL::ChangeLog(is), zuna_test::SampleLog()), "");
  EXPECT_TRUE(is.good());
  is.seekg(0);
  EXPECT_EQ(is.get(), 'b');
}

TEST_P(EveryLogVersion, KeepsSongsInByteOrder) {
  CL::ChangeLog log;
  for (const char* number : {"2", "10", "1", "01", "\xFF", ""}) {
    log.AddSongLog(std::make_shared<CL::SongLog>(number, "", static_cast<unsigned short>(0), 0U));
  }
  const CL::ChangeLog read = ReadLog(WriteLog(log, GetParam()));
  std::string numbers;
  for (const auto& [number, song] : read.song_logs()) numbers += number + " ";
  EXPECT_EQ(numbers, " 01 1 10 2 \xFF ");
}

TEST(BinaryLog, CountsTheBytesBehindTheFirstEightLikeALegacyLog) {
  for (const cmn::FileVersion& version : {kLogVersions[0], kLogVersions[1]}) {
    const std::string bytes = WriteLog(zuna_test::SampleLog(), version);
    EXPECT_EQ(zuna_core::GetFixed(bytes.data() + 4, 4), bytes.size() - 8);
  }
}

TEST(LogEquality, NamesTheFirstDifference) {
  const CL::ChangeLog log = zuna_test::SampleLog();
  const auto difference = [&](const auto& change) {
    CL::ChangeLog other = zuna_test::SampleLog();
    change(other, *other.song_logs().begin()->second);
    return FirstDifference(log, other);
  };
  EXPECT_EQ(difference([](auto&, auto&) {}), "");
  EXPECT_EQ(difference([](auto& other, auto&) { other.show_name.clear(); }), "show name");
  EXPECT_EQ(difference([](auto& other, auto&) { other.log_label.clear(); }), "log label");
  EXPECT_EQ(difference([](auto& other, auto&) { other.identifier = kit::UUID::Nil(); }), "identifier");
  EXPECT_EQ(difference([](auto& other, auto&) { other.log_tag_pair.second = 1; }), "tag pair");
  EXPECT_EQ(difference([](auto&, auto& song) { song.attacca = 0; }), "song \"2b\", attacca");
  EXPECT_EQ(difference([](auto&, auto& song) { song.cuts->events.clear(); }), "song \"2b\", cut 0");
  EXPECT_EQ(difference([](auto&, auto& song) { song.vamps->events[1].label.clear(); }),
            "song \"2b\", vamp 1");
  EXPECT_EQ(difference([](auto&, auto& song) { song.tempo_scales->events[1].value_bits ^= 1U; }),
            "song \"2b\", tempo scale 1");
  EXPECT_EQ(difference([](auto&, auto& song) { song.markers->events[1].text.clear(); }),
            "song \"2b\", marker 1");
  EXPECT_EQ(difference([](auto&, auto& song) { song.caesuras->events[0].second_word = 0; }),
            "song \"2b\", caesura 0");
}

}  // namespace
