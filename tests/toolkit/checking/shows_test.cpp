// Every finding about a current show, by its text.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/sample_models.h"
#include "tests/toolkit/checking/describe.h"

namespace zuna_toolkit {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zuna_midi::SongData;
using Messages = decltype(zuna_midi::VoiceTrack::messages);

/// A song of one note, with nothing to find fault with.
std::shared_ptr<SongData> SoundSong() {
  auto song = std::make_shared<SongData>("1", "Song", static_cast<unsigned short>(480), 1920U);
  song->timeline->tempos = {{0, 500000}};
  song->timeline->meters = {{0, 4, 4, 24, 8}};
  auto voice = std::make_shared<zuna_midi::VoiceTrack>();
  voice->track_number = 3;
  voice->name = "Piano";
  voice->messages = {{0, {0x90, 60, 100}}, {480, {0x80, 60, 0}}};
  song->voice_data->AddTrack(voice);
  return song;
}

/// The findings about a show of this song, which has the number 1.
std::vector<std::string> FindingsOfSong(const std::shared_ptr<SongData>& song) {
  zuna_midi::ShowData show;
  show.AddSongData(song);
  return zuna_test::FindingsOf({show, {1, 2}, "show"});
}

/// The same after `change(song)`.
template <typename Change>
std::vector<std::string> FindingsAfter(Change change) {
  const auto song = SoundSong();
  change(*song);
  return FindingsOfSong(song);
}

std::vector<std::string> FindingsOfMessages(const Messages& messages) {
  return FindingsAfter([&](SongData& song) { song.voice_data->GetTrack(3)->messages = messages; });
}

TEST(CheckShow, FindsNothingInASoundShow) { EXPECT_THAT(FindingsOfSong(SoundSong()), IsEmpty()); }

TEST(CheckShow, FindsAnEmptyShowAndItsName) {
  zuna_midi::ShowData show;
  show.show_name.assign(1, '\xFF');
  EXPECT_THAT(zuna_test::FindingsOf({show, {1, 2}, "show"}),
              ElementsAre("warning text-not-utf8: the show name is not valid UTF-8",
                          "warning show-empty: there are no songs"));
}

TEST(CheckShow, FindsFieldsOfASong) {
  const auto song = SoundSong();
  song->song_number.clear();
  song->song_name.assign("\xC3");
  song->division = 0;
  song->song_length = 0;
  song->voice_data->GetTrack(3)->name.assign("\x80");
  EXPECT_THAT(
      FindingsOfSong(song),
      ElementsAre("warning song-number-empty: the song number is empty",
                  "warning text-not-utf8: the song name is not valid UTF-8",
                  "error song-length-zero: the length of the song is 0",
                  "error division-zero: the division is 0",
                  "warning text-not-utf8, voices[0] of voice 3: the name of voice 3 is not valid UTF-8"));
}

TEST(CheckShow, FindsSongsWithoutVoicesAndMessages) {
  EXPECT_THAT(
      FindingsAfter([](SongData& song) { song.voice_data = std::make_shared<zuna_midi::VoiceData>(); }),
      ElementsAre("warning song-without-voices, song 1: there are no voices"));
  EXPECT_THAT(FindingsOfMessages({}),
              ElementsAre("warning song-without-messages, song 1: no voice has a message"));
}

TEST(CheckShow, FindsSongsThatLackAPart) {
  EXPECT_THAT(FindingsAfter([](SongData& song) { song.voice_data = nullptr; }),
              ElementsAre("error song-incomplete, song 1: the voices are missing"));
  EXPECT_THAT(FindingsAfter([](SongData& song) { song.timeline = nullptr; }),
              ElementsAre("error song-incomplete, song 1: the timeline is missing"));
}

TEST(CheckShow, FindsMissingAndLateTemposAndMeters) {
  EXPECT_THAT(FindingsAfter([](SongData& song) {
                song.timeline->tempos.clear();
                song.timeline->meters.clear();
              }),
              ElementsAre("error tempo-missing, song 1, tempos[0]: there is no tempo",
                          "error meter-missing, song 1, meters[0]: there is no meter"));
  EXPECT_THAT(
      FindingsAfter([](SongData& song) {
        song.timeline->tempos[0].time = 240;
        song.timeline->meters[0].time = 480;
      }),
      ElementsAre(
          "warning tempo-late, song 1, tempos[0] at 240: the first tempo is at 240, not at 0",
          "warning meter-late, song 1, meters[0] at 480: the first meter is at 480, not at 0",
          "error meter-without-tempo, song 1, meters[0] at 480: the first meter, at 480, has no tempo"));
}

TEST(CheckShow, FindsTemposAndMetersThatAreNone) {
  EXPECT_THAT(
      FindingsAfter([](SongData& song) {
        song.timeline->tempos[0].microseconds = 0;
        song.timeline->meters = {
            {0, 0, 4, 24, 8}, {1, 4, 0, 24, 8}, {2, 4, 6, 24, 8}, {3, 4, 4, 0, 8}, {4, 4, 4, 24, 0}};
      }),
      ElementsAre("error tempo-zero, song 1, tempos[0] at 0: the tempo at 0 is 0 us",
                  "error meter-zero, song 1, meters[0] at 0: the meter at 0 is 0/4",
                  "error meter-zero, song 1, meters[1] at 1: the meter at 1 is 4/0",
                  "error denominator-not-power-of-two, song 1, meters[2] at 2: the meter at 2 is 4/6",
                  "warning click-zero, song 1, meters[3] at 3: the meter at 3 has a click of 0 clocks "
                  "and 8 32nds per quarter",
                  "warning click-zero, song 1, meters[4] at 4: the meter at 4 has a click of 24 clocks "
                  "and 0 32nds per quarter"));
}

TEST(CheckShow, FindsTemposAndKeysThatMusicDoesNotHave) {
  EXPECT_THAT(
      FindingsAfter([](SongData& song) {
        song.timeline->tempos = {{0, 92}, {1, 59999}, {2, 60000}, {3, 6000000}, {4, 6000001}};
        song.timeline->keys = {{0, -7, 0}, {1, 7, 1}, {2, -8, 0}, {3, 300, 1}, {4, 0, 2}};
      }),
      ElementsAre(
          "warning tempo-unlikely, song 1, tempos[0] at 0: the tempo at 0 is 652174 quarter notes a minute",
          "warning tempo-unlikely, song 1, tempos[1] at 1: the tempo at 1 is 1000.02 quarter notes a minute",
          "warning tempo-unlikely, song 1, tempos[4] at 4: the tempo at 4 is 10 quarter notes a minute",
          "warning key-unknown, song 1, keys[2] at 2: the key at 2 is key -8 mode 0",
          "warning key-unknown, song 1, keys[3] at 3: the key at 3 is key 300 mode 1",
          "warning key-unknown, song 1, keys[4] at 4: the key at 4 is key 0 mode 2"));
}

TEST(CheckShow, FindsTimelinesInDisorder) {
  EXPECT_THAT(
      FindingsAfter([](SongData& song) {
        song.timeline->keys = {{480, 1, 0}, {240, 2, 0}};
        song.timeline->page_numbers = {{480, 1}, {480, 2}};
        song.timeline->bars_beats = {zuna_test::SampleLabel(0, "\xFF", 0),
                                     zuna_test::SampleLabel(1920, "2", 0),
                                     zuna_test::SampleLabel(1921, "3", 0)};
      }),
      ElementsAre("warning text-not-utf8, song 1, barsBeats[0] at 0: the bar label at 0 is not valid UTF-8",
                  "warning timeline-beyond-end, song 1, barsBeats[2] at 1921: the bar label at 1921 is "
                  "after the end of the song at 1920",
                  "error timeline-out-of-order, song 1, keys[1] at 240: the key at 240 is after the one "
                  "at 480",
                  "warning timeline-duplicate, song 1, pageNumbers[1] at 480: the page number at 480 is "
                  "not the only one there"));
}

TEST(CheckShow, NamesTheBar) {
  const auto song = SoundSong();
  song->timeline->bars_beats = {zuna_test::SampleLabel(480, "2", 0), zuna_test::SampleLabel(240, "1", 0)};
  song->timeline->tempos = {{0, 0}, {240, 0}, {479, 0}, {1920, 0}};
  zuna_midi::ShowData show;
  show.AddSongData(song);
  std::vector<std::string> bars;
  Check({show, {1, 2}, "show"}, [&](const Finding& finding) {
    if (finding.code == FindingCode::kTempoZero) bars.push_back(finding.place.bar);
  });
  EXPECT_THAT(bars, ElementsAre("", "1", "1", "2"));
}

TEST(CheckShow, FindsMessagesThatCannotBeSent) {
  EXPECT_THAT(
      FindingsOfMessages({{0, {0x7F, 1, 2}},
                          {0, {0xF0, 1, 2}},
                          {0, {0xB0, 128, 0}},
                          {0, {0xB0, 0, 255}},
                          {0, {0xC0, 200, 0}},
                          {0, {0xD0, 127, 255}}}),  // channel pressure has one data byte
      ElementsAre(
          "error status-invalid, song 1, messages[0] of voice 3 at 0: the message of voice 3 at 0 has "
          "the status 0x7F",
          "error status-invalid, song 1, messages[1] of voice 3 at 0: the message of voice 3 at 0 has "
          "the status 0xF0",
          "error data-byte-invalid, song 1, messages[2] of voice 3 at 0: the message of voice 3 at 0 has "
          "the data bytes 128 and 0",
          "error data-byte-invalid, song 1, messages[3] of voice 3 at 0: the message of voice 3 at 0 has "
          "the data bytes 0 and 255",
          "error data-byte-invalid, song 1, messages[4] of voice 3 at 0: the message of voice 3 at 0 has "
          "the data byte 200"));
}

TEST(CheckShow, FindsMessagesInDisorder) {
  EXPECT_THAT(
      FindingsOfMessages({{480, {0xC0, 1, 0}}, {240, {0xC0, 2, 0}}, {1921, {0xC0, 3, 0}}}),
      ElementsAre("error message-out-of-order, song 1, messages[1] of voice 3 at 240: the message of "
                  "voice 3 at 240 is after the one at 480",
                  "warning message-beyond-end, song 1, messages[2] of voice 3 at 1921: the message of "
                  "voice 3 at 1921 is after the end of the song at 1920"));
}

TEST(CheckShow, FindsNotesThatAreLeftOn) {
  EXPECT_THAT(FindingsOfMessages({{0, {0x90, 60, 1}},
                                  {1, {0x91, 60, 1}},
                                  {2, {0x90, 61, 1}},
                                  {3, {0x90, 61, 1}},
                                  {4, {0x90, 60, 0}},  // a note-off
                                  {5, {0x80, 61, 0}},
                                  {6, {0x80, 99, 0}}}),
              ElementsAre("warning note-left-on, song 1, messages[3] of voice 3 at 3: note 61 of voice 3 on "
                          "channel 1 is left on; it begins at 3",
                          "warning note-left-on, song 1, messages[1] of voice 3 at 1: note 60 of voice 3 on "
                          "channel 2 is left on; it begins at 1"));
}

TEST(CheckShow, TakesControllersThatEndAllNotes) {
  for (const std::uint8_t controller : std::initializer_list<std::uint8_t>{120, 123, 127}) {
    EXPECT_THAT(FindingsOfMessages({{0, {0x90, 60, 1}}, {1, {0xB0, controller, 0}}}), IsEmpty());
    EXPECT_THAT(FindingsOfMessages({{0, {0x90, 60, 1}}, {1, {0xB1, controller, 0}}}), ::testing::SizeIs(1));
  }
  EXPECT_THAT(FindingsOfMessages({{0, {0x90, 60, 1}}, {1, {0xB0, 121, 0}}}), ::testing::SizeIs(1));
}

}  // namespace
}  // namespace zuna_toolkit
