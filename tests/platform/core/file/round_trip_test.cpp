// What is written in any version reads back the same, for both kinds of files.

#include <gtest/gtest.h>

#include <random>
#include <sstream>

#include "platform/core/bytes/coding.h"
#include "tests/platform/core/file/kinds.h"

namespace {

using zuna_test::FirstDifference;
using zuna_test::Read;
using zuna_test::Versions;
using zuna_test::Write;

template <typename Kind>
class RoundTrip : public testing::Test {
 protected:
  using Model = typename Kind::Model;
};

using Kinds = testing::Types<zuna_test::ShowKind, zuna_test::LogKind>;
TYPED_TEST_SUITE(RoundTrip, Kinds);

TYPED_TEST(RoundTrip, WritesTheBytesOfTheSample) {
  for (const cmn::FileVersion& version : Versions<TypeParam>()) {
    EXPECT_EQ(Write(TypeParam::Sample(), version), TypeParam::SampleFile(version));
  }
}

TYPED_TEST(RoundTrip, ReadsTheBytesOfTheSample) {
  for (const cmn::FileVersion& version : Versions<TypeParam>()) {
    const auto model = Read<typename TypeParam::Model>(TypeParam::SampleFile(version));
    EXPECT_EQ(FirstDifference(model, TypeParam::Sample()), "");
  }
}

TYPED_TEST(RoundTrip, HoldsAnEmptyModel) {
  const typename TypeParam::Model empty;
  for (const cmn::FileVersion& version : Versions<TypeParam>()) {
    EXPECT_EQ(FirstDifference(Read<typename TypeParam::Model>(Write(empty, version)), empty), "");
  }
}

TYPED_TEST(RoundTrip, HoldsAnyModel) {
  for (const cmn::FileVersion& version : Versions<TypeParam>()) {
    std::mt19937 random(1);
    for (int i = 0; i < 500; ++i) {
      const auto model = TypeParam::Random(random);
      const auto again = Read<typename TypeParam::Model>(Write(model, version));
      EXPECT_EQ(FirstDifference(again, model), "") << "model " << i;
    }
  }
}

TYPED_TEST(RoundTrip, HoldsMoreThanABuffer) {
  const auto model = TypeParam::Big();
  for (const cmn::FileVersion& version : Versions<TypeParam>()) {
    const std::string bytes = Write(model, version);
    EXPECT_GT(bytes.size(), 10U * 64 * 1024);
    EXPECT_EQ(FirstDifference(Read<typename TypeParam::Model>(bytes), model), "");
  }
}

TYPED_TEST(RoundTrip, HoldsATextLongerThanABuffer) {
  for (const cmn::FileVersion& version : Versions<TypeParam>()) {
    auto model = TypeParam::Sample();
    model.show_name = std::string(200000, '\n') + std::string(70000, 'x');
    EXPECT_EQ(FirstDifference(Read<typename TypeParam::Model>(Write(model, version)), model), "");
    model.show_name += '\xFF';
    EXPECT_EQ(FirstDifference(Read<typename TypeParam::Model>(Write(model, version)), model), "");
  }
}

TYPED_TEST(RoundTrip, EveryVersionConvertsToEveryOtherWithoutADifference) {
  for (const cmn::FileVersion& from : Versions<TypeParam>()) {
    std::mt19937 random(3);
    for (int i = 0; i < 100; ++i) {
      const auto model = TypeParam::Random(random);
      const auto first = Read<typename TypeParam::Model>(Write(model, from));
      for (const cmn::FileVersion& to : Versions<TypeParam>()) {
        const std::string bytes = Write(first, to);
        EXPECT_EQ(bytes, Write(model, to));
        EXPECT_EQ(FirstDifference(Read<typename TypeParam::Model>(bytes), model), "");
      }
    }
  }
}

TYPED_TEST(RoundTrip, ReadsFromThePositionToTheEndAndLeavesTheStreamUsable) {
  for (const cmn::FileVersion& version : Versions<TypeParam>()) {
    std::istringstream is("before" + TypeParam::SampleFile(version));
    is.exceptions(std::ios_base::failbit | std::ios_base::badbit | std::ios_base::eofbit);
    is.seekg(6);
    EXPECT_EQ(FirstDifference(typename TypeParam::Model(is), TypeParam::Sample()), "");
    EXPECT_TRUE(is.good());
    is.seekg(0);
    EXPECT_EQ(is.get(), 'b');
  }
}

TYPED_TEST(RoundTrip, HeaderCountsTheBytesAfterTheFirstEight) {
  for (const cmn::FileVersion& version : zuna_test::BinaryVersions<TypeParam>()) {
    const std::string bytes = Write(TypeParam::Sample(), version);
    EXPECT_EQ(zuna_core::GetFixed(bytes.data() + 4, 4), bytes.size() - 8);
  }
}

TEST(LogFile, KeepsSongsInByteOrder) {
  CL::ChangeLog log;
  for (const char* number : {"2", "10", "1", "01", "\xFF", ""}) {
    log.AddSongLog(std::make_shared<CL::SongLog>(number, "", static_cast<unsigned short>(0), 0U));
  }
  for (const cmn::FileVersion& version : Versions<zuna_test::LogKind>()) {
    const CL::ChangeLog read = Read<CL::ChangeLog>(Write(log, version));
    std::string numbers;
    for (const auto& [number, song] : read.song_logs()) numbers += number + " ";
    EXPECT_EQ(numbers, " 01 1 10 2 \xFF ");
  }
}

TEST(LogFile, StatesItsVersion) {
  for (const cmn::FileVersion& version : Versions<zuna_test::LogKind>()) {
    EXPECT_EQ(Read<CL::ChangeLog>(zuna_test::SampleLogFile(version)).file_version, version);
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
