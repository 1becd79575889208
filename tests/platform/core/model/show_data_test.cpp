// The model of a show.

#include "zuna_midi/show_data.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/support/bytes.h"

namespace {

using zuna_test::MessageOf;

std::shared_ptr<zuna_midi::SongData> Song(const std::string& number, const std::string& name = "") {
  return std::make_shared<zuna_midi::SongData>(number, name, static_cast<unsigned short>(480), 960U);
}

TEST(SongData, StartsWithAnEmptyTimelineAndNoVoices) {
  const zuna_midi::SongData song("12a", "Overture", 480, 7680);
  EXPECT_EQ(song.song_number, "12a");
  EXPECT_EQ(song.song_name, "Overture");
  EXPECT_EQ(song.division, 480);
  EXPECT_EQ(song.song_length, 7680U);
  EXPECT_EQ(*song.timeline, TL::Timeline());
  EXPECT_EQ(song.voice_data->track_count(), 0);
}

TEST(ShowData, WalksSongsInNumericOrder) {
  zuna_midi::ShowData show;
  for (const char* number : {"10", "2", "1"}) show.AddSongData(Song(number));
  std::vector<std::string> numbers;
  for (const auto& [number, song] : show.songs()) numbers.push_back(number);
  EXPECT_THAT(numbers, testing::ElementsAre("1", "2", "10"));
}

TEST(ShowData, LaterSongOfTheSameNumberWins) {
  zuna_midi::ShowData show;
  show.AddSongData(Song("1", "first"));
  show.AddSongData(Song("1", "second"));
  EXPECT_EQ(show.songs().at("1")->song_name, "second");
  EXPECT_EQ(MessageOf<std::invalid_argument>([&] { show.AddSongData(nullptr); }),
            "ShowData::AddSongData: no song was given");
}

TEST(ShowData, CopyHasItsOwnMapOfTheSameSongs) {
  zuna_midi::ShowData show;
  show.show_name = "Opera";
  show.AddSongData(Song("1"));
  zuna_midi::ShowData copy = show;
  copy.AddSongData(Song("2"));
  EXPECT_EQ(show.songs().size(), 1U);
  EXPECT_EQ(copy.show_name, "Opera");
  EXPECT_EQ(copy.songs().at("1"), show.songs().at("1"));
  show = copy;
  copy.AddSongData(Song("3"));
  EXPECT_EQ(show.songs().size(), 2U);
  EXPECT_EQ(show.songs().at("2"), copy.songs().at("2"));
}

TEST(VoiceData, WalksTracksByNumberAndFindsThem) {
  zuna_midi::VoiceData voices;
  for (const int number : {300, 9, 2}) {
    auto track = std::make_shared<zuna_midi::VoiceTrack>();
    track->track_number = static_cast<std::uint16_t>(number);
    voices.AddTrack(track);
  }
  EXPECT_EQ(voices.track_count(), 3);
  EXPECT_EQ(voices.tracks().begin()->first, 2);
  EXPECT_EQ(voices.GetTrack(300)->track_number, 300);
  EXPECT_EQ(voices.GetTrack(9)->reserved, 0xFFFF);
  EXPECT_EQ(MessageOf<std::invalid_argument>([&] { voices.AddTrack(nullptr); }),
            "VoiceData::AddTrack: no voice track was given");
  EXPECT_EQ(voices.track_count(), 3);
}

TEST(VoiceData, NamesATrackThatIsAbsent) {
  zuna_midi::VoiceData voices;
  try {
    voices.GetTrack(7);
    FAIL() << "nothing was thrown";
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), "There is no voice track with number 7");
  }
}

}  // namespace
