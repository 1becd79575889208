// Every finding about the records of a legacy show, by its text.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/support/legacy_samples.h"
#include "tests/toolkit/checking/describe.h"

namespace zuna_toolkit {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

version0::SongData SoundSong() {
  version0::SongData song = zuna_test::SampleLegacySong("1", 480);
  song.song_length = 1920;
  song.events[1].emplace_back(0, 960, std::uint8_t{0x80}, std::uint8_t{60}, std::uint8_t{0}, std::uint8_t{1});
  return song;
}

std::vector<std::string> FindingsOfSong(const version0::SongData& song) {
  LegacyShow show;
  show.show.songs["1"] = song;
  return zuna_test::FindingsOf({show, {}, "show"});
}

TEST(CheckLegacyShow, FindsNothingInASoundShow) { EXPECT_THAT(FindingsOfSong(SoundSong()), IsEmpty()); }

TEST(CheckLegacyShow, FindsWhatTheFileHasBesides) {
  LegacyShow show;
  show.replaced_songs = 1;
  show.trailing_bytes = 2;
  show.replaced_sequences = 3;
  EXPECT_THAT(zuna_test::FindingsOf({show, {}, "show"}),
              ElementsAre("warning song-repeated: 1 song was replaced by a later song of the same number",
                          "warning sequence-repeated: 3 lists were replaced by a later list of the same kind",
                          "warning show-empty: there are no songs",
                          "warning trailing-bytes: 2 bytes follow the last song"));
}

TEST(CheckLegacyShow, FindsFieldsOfASong) {
  version0::SongData song = SoundSong();
  song.song_number.clear();
  song.song_name.assign("\xFF");
  song.division = 0;
  song.song_length = 0;
  song.timeline.name.assign("\xFF");
  song.tracks = {{1, "\xFF"}};
  song.timeline.tempos[0].seconds_per_tick = 1;
  EXPECT_THAT(
      FindingsOfSong(song),
      ElementsAre(
          "warning song-number-empty, song 1: the song number is empty",
          "warning text-not-utf8, song 1: the song name is not valid UTF-8",
          "error song-length-zero, song 1: the length of the song is 0",
          "error division-zero, song 1: the division is 0",
          "warning text-not-utf8, song 1, voices[0] of voice 1: the name of voice 1 is not valid UTF-8",
          "warning text-not-utf8, song 1: the name of the timeline is not valid UTF-8"));
}

TEST(CheckLegacyShow, FindsTracks) {
  version0::SongData song = SoundSong();
  song.tracks = {{2, "Piano"}, {2, "Bass"}};
  EXPECT_THAT(
      FindingsOfSong(song),
      ElementsAre("warning track-shared, song 1, voices[0] of voice 2: 2 tracks have the id 2",
                  "error track-missing, song 1, voices[0] of voice 1: 2 events belong to track 1, which "
                  "is not there"));
  song.tracks.clear();
  song.events = {{1, {}}};
  EXPECT_THAT(FindingsOfSong(song), ElementsAre("warning song-without-voices, song 1: there are no voices"));
  song.tracks = {{1, "Piano"}};
  EXPECT_THAT(FindingsOfSong(song),
              ElementsAre("warning song-without-messages, song 1: no voice has a message"));
}

TEST(CheckLegacyShow, FindsEvents) {
  version0::SongData song = SoundSong();
  song.events = {{1,
                  {{0, 480, 0x70, 0, 0, 1},
                   {0, 240, 0xF0, 0, 0, 1},
                   {0, 240, 0x90, 200, 0, 1},
                   {0, 960, 0x90, 60, 1, 1},
                   {0, 1921, 0xB0, 0, 0, 1}}}};
  EXPECT_THAT(
      FindingsOfSong(song),
      ElementsAre(
          "error status-invalid, song 1, messages[0] of voice 1 at 480: the message of voice 1 at 480 has "
          "the status 0x71",
          "error message-out-of-order, song 1, messages[1] of voice 1 at 240: the message of voice 1 at "
          "240 is after the one at 480",
          "error status-invalid, song 1, messages[1] of voice 1 at 240: the message of voice 1 at 240 has "
          "the status 0xF1",
          "error data-byte-invalid, song 1, messages[2] of voice 1 at 240: the message of voice 1 at 240 "
          "has the data bytes 200 and 0",
          "warning message-beyond-end, song 1, messages[4] of voice 1 at 1921: the message of voice 1 at "
          "1921 is after the end of the song at 1920",
          "warning note-left-on, song 1, messages[3] of voice 1 at 960: note 60 of voice 1 on channel 2 "
          "is left on; it begins at 960"));
}

TEST(CheckLegacyShow, FindsTimelines) {
  version0::SongData song = SoundSong();
  song.timeline.tempos = {{240, 0.001F, 8, 8, 120}, {240, 0, 8, 8, 120},
                          {480, -1, 8, 8, 120},     {481, std::numeric_limits<float>::infinity(), 8, 8, 120},
                          {482, 0.001F, 0, 8, 120}, {483, 0.001F, 8, 0, 120}};
  song.timeline.meters = {{0, 0, 4}, {480, 3, 3}, {240, 4, 4}};
  song.timeline.bars_beats = {{1921, "\xFF", 0}};
  EXPECT_THAT(
      FindingsOfSong(song),
      ElementsAre(
          "warning tempo-late, song 1, tempos[0] at 240: the first tempo is at 240, not at 0",
          "warning timeline-duplicate, song 1, tempos[1] at 240: the tempo at 240 is not the only one there",
          "error tempo-zero, song 1, tempos[1] at 240: the tempo at 240 has no length: a tick of 0 s",
          "error tempo-zero, song 1, tempos[2] at 480: the tempo at 480 has no length: a tick of -1 s",
          "error tempo-zero, song 1, tempos[3] at 481: the tempo at 481 has no length: a tick of inf s",
          "warning click-zero, song 1, tempos[4] at 482: the tempo at 482 has a click of 0 of 8 32nds",
          "warning click-zero, song 1, tempos[5] at 483: the tempo at 483 has a click of 8 of 0 32nds",
          "warning timeline-beyond-end, song 1, barsBeats[0] at 1921: the bar label at 1921 is after the "
          "end of the song at 1920",
          "warning text-not-utf8, song 1, barsBeats[0] at 1921: the bar label at 1921 is not valid UTF-8",
          "error meter-zero, song 1, meters[0] at 0: the meter at 0 is 0/4",
          "error denominator-not-power-of-two, song 1, meters[1] at 480: the meter at 480 is 3/3",
          "error timeline-out-of-order, song 1, meters[2] at 240: the meter at 240 is after the one at "
          "480"));
}

TEST(CheckLegacyShow, FindsTemposAndKeysThatMusicDoesNotHave) {
  version0::SongData song = SoundSong();
  song.timeline.tempos = {{0, 0.652174F, 8, 8, 92}};
  song.timeline.keys = {{0, -7, 1}, {240, 8, 0}};
  EXPECT_THAT(
      FindingsOfSong(song),
      ElementsAre("warning tempo-unlikely, song 1, tempos[0] at 0: the tempo at 0 is 0.191667 quarter "
                  "notes a minute",
                  "warning key-unknown, song 1, keys[1] at 240: the key at 240 is key 8 mode 0"));
}

}  // namespace
}  // namespace zuna_toolkit
