#include "format_converter/version0/containers/show_data.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "format_converter/version0/primitives/errors.h"
#include "tests/format_converter/support/errors.h"
#include "tests/format_converter/support/line_flushes.h"
#include "tests/support/bytes.h"
#include "zuna_midi/show_data.h"

namespace {

using version0::ShowData;
using version0::SongData;
using zuna_test::Bytes;
using zuna_test::ExactMessageOf;
using zuna_test::MessageOf;
using zuna_test::Read;
using zuna_test::Written;

SongData Song(const std::string& number, const std::string& name = "Tune") {
  SongData song;
  song.song_number = number;
  song.song_name = name;
  song.division = 480;
  song.timeline.tempos = {{0, static_cast<float>(0.5 / 480), 8, 8, 120}};
  song.timeline.meters = {{0, 4, 4}};
  song.tracks = {{1, "Piano"}};
  song.events = {{1, {{480, 480, 0x90, 60, 100, 1}}}};
  return song;
}

ShowData Show(const std::vector<std::string>& numbers) {
  ShowData show;
  for (const std::string& number : numbers) show.songs[number] = Song(number);
  return show;
}

TEST(LegacyShow, WithoutSongsIsOneZeroByte) {
  EXPECT_EQ(Written(ShowData()), Bytes({0}));
  EXPECT_TRUE(Read<ShowData>(Bytes({0})).songs.empty());
}

TEST(LegacyShow, IsACountAndItsSongs) {
  EXPECT_EQ(Written(Show({"1", "2"})), Bytes({2}) + Written(Song("1")) + Written(Song("2")));
}

TEST(LegacyShow, WritesSongsInNumericOrderHoweverTheyStoodInTheFile) {
  const auto show = Read<ShowData>(Bytes({2}) + Written(Song("10")) + Written(Song("2")));
  EXPECT_EQ(Written(show), Bytes({2}) + Written(Song("2")) + Written(Song("10")));
}

TEST(LegacyShow, LaterSongOfTheSameNumberWins) {
  const auto show = Read<ShowData>(Bytes({2}) + Written(Song("1", "first")) + Written(Song("1", "second")));
  ASSERT_EQ(show.songs.size(), 1U);
  EXPECT_EQ(show.songs.at("1").song_name, "second");
}

TEST(LegacyShow, ShortReadThrowsAndTheMaskStays) {
  const std::string bytes = Written(Show({"1"}));
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    std::istringstream is(bytes.substr(0, length));
    EXPECT_THROW(ShowData show(is), std::ios_base::failure) << length;
    EXPECT_EQ(is.exceptions(), std::ios_base::failbit | std::ios_base::badbit);
  }
}

TEST(LegacyShow, FailedStreamThrowsAtOnce) {
  std::istringstream is(Bytes({0}));
  is.setstate(std::ios_base::failbit);
  EXPECT_THROW(ShowData show(is), std::ios_base::failure);
}

TEST(LegacyShow, MaskStaysAfterSuccess) {
  std::istringstream is(Bytes({0}));
  const ShowData show(is);
  EXPECT_EQ(is.exceptions(), std::ios_base::failbit | std::ios_base::badbit);
}

TEST(LegacyShow, SongErrorsPassAndWhatWasWrittenStays) {
  ShowData show = Show({"1", "2"});
  show.songs["2"].events.clear();
  std::ostringstream os;
  EXPECT_EQ(MessageOf<std::out_of_range>([&] { show.write_binary(os); }), "vector");
  EXPECT_EQ(os.str().substr(0, 1 + Written(Song("1")).size()), Bytes({2}) + Written(Song("1")));
}

TEST(LegacyShow, SongCountIsOneByte) {
  ShowData show;
  for (int i = 0; i < 257; ++i) show.songs[std::to_string(i)] = Song(std::to_string(i));
  EXPECT_EQ(Written(show)[0], 1) << "257 modulo 256";
}

TEST(LegacyShow, ComparesSongsInStep) {
  EXPECT_TRUE(Show({"1", "2"}) == Show({"1", "2"}));
  EXPECT_FALSE(Show({"1", "2"}) != Show({"1", "2"}));
  ShowData other = Show({"1", "2"});
  other.songs["2"].division = 96;
  EXPECT_EQ(ExactMessageOf<version0::Version0Error>([&] {
              static_cast<void>(Show({"1", "2"}) != other);
            }),
            "division failed");
  EXPECT_EQ(ExactMessageOf<version0::Version0Error>([&] { static_cast<void>(Show({"1"}) == Show({"2"})); }),
            "song_number failed");
}

TEST(LegacyShow, ReportsADifferenceBeforeTheEndOfTheShorterSide) {
  ShowData shorter = Show({"1"});
  shorter.songs["1"].events[1][0].data2 = 1;
  std::string difference;
  const auto printed = zuna_test::Print([&] {
    difference = ExactMessageOf<version0::Version0Error>([&] {
      static_cast<void>(Show({"1", "2"}) == shorter);
    });
  });
  EXPECT_EQ(difference, "EventObject data2 not equal");
  EXPECT_EQ(printed.text, "EventObject(480, 480, 0x90, 60, 100, 1)\nEventObject(480, 480, 0x90, 60, 1, 1)\n");
  EXPECT_EQ(printed.unflushed_lines, 0);
}

TEST(LegacyShow, SurplusSongsOnTheRightDoNotCount) {
  EXPECT_TRUE(Show({"1"}) == Show({"1", "2"}));
  EXPECT_TRUE(ShowData() == Show({"1"}));
  EXPECT_EQ(ExactMessageOf<version0::Version0Error>([] {
              static_cast<void>(Show({"1", "2"}) == Show({"1"}));
            }),
            "songs did not compare equal");
}

TEST(ShowConversion, GoesUpAndDownSongBySong) {
  ShowData legacy = Show({"10", "2"});
  for (auto& [number, song] : legacy.songs) song.timeline.name = number;
  const zuna_midi::ShowData up = legacy.get_version_1_0();
  EXPECT_EQ(up.show_name, "");
  ASSERT_EQ(up.songs().size(), 2U);
  EXPECT_EQ(up.songs().begin()->first, "2");
  EXPECT_EQ(Written(ShowData(up)), Written(legacy));
}

TEST(ShowConversion, SongWithTooManyVoicesRefusesTheShow) {
  zuna_midi::ShowData show = Show({"1", "2"}).get_version_1_0();
  for (std::uint16_t number = 1; number <= 242; ++number) {
    auto voice = std::make_shared<zuna_midi::VoiceTrack>();
    voice->track_number = number;
    voice->name = "Drums";
    show.songs().at("2")->voice_data->AddTrack(voice);
  }
  EXPECT_EQ(MessageOf<version0::TrackCountError>([&] { ShowData legacy(show); }),
            "track_count() greater than 241 cannot be converted.");
}

}  // namespace
