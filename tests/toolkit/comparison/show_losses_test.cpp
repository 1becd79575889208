// What a show loses on its way down to format 0.0 and up to a current version.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/toolkit/comparison/describe.h"
#include "toolkit/comparison/comparison.h"

namespace zuna_toolkit {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using zuna_test::Collected;

/// A show of one song that format 0.0 holds whole.
class ShowLosses : public testing::Test {
 protected:
  ShowLosses() {
    song_ = std::make_shared<zuna_midi::SongData>("1", "Song", std::uint16_t{480}, 1920U);
    song_->timeline->tempos = {{0, 500000}};
    song_->timeline->meters = {{0, 4, 4, 24, 8}};
    show_.AddSongData(song_);
    AddVoice(1, "Piano")->messages = {{0, {0x91, 60, 100}}};
  }

  std::shared_ptr<zuna_midi::VoiceTrack> AddVoice(std::uint16_t number, const std::string& name) {
    auto voice = std::make_shared<zuna_midi::VoiceTrack>();
    voice->track_number = number;
    voice->name = name;
    song_->voice_data->AddTrack(voice);
    return voice;
  }

  zuna_midi::VoiceTrack& Piano() { return *song_->voice_data->GetTrack(1); }
  TL::Timeline& Timeline() { return *song_->timeline; }
  std::vector<std::string> Losses() const { return zuna_test::DownLosses({show_, {1, 2}, "show"}); }

  zuna_midi::ShowData show_;
  std::shared_ptr<zuna_midi::SongData> song_;
};

TEST_F(ShowLosses, AreNoneWhereFormat0HoldsEverything) {
  AddVoice(2, "Bass")->messages = {{0, {0xC2, 1, 0}}, {5, {0xE2, 1, 2}}};
  AddVoice(9, "Drums")->messages = {{0, {0x99, 36, 1}}};
  Timeline().keys = {{0, -7, 1}};
  Timeline().page_numbers = {{0, 65535}};
  EXPECT_THAT(Losses(), IsEmpty());
}

TEST_F(ShowLosses, NameTheShow) {
  show_.show_name = "Gala";
  EXPECT_THAT(Losses(), ElementsAre("show-name-dropped: Gala -> "));
}

TEST_F(ShowLosses, NameVoiceNumbersAndReservedFields) {
  AddVoice(7, "Bass")->reserved = 3;
  AddVoice(8, "Horn");
  EXPECT_THAT(
      Losses(),
      ElementsAre(R"(song 1: voice-renumbered voices[0] (voice 7 "Bass"): voice 7 "Bass" -> voice 2)",
                  R"(song 1: reserved-field-defaulted voices[0] (voice 7 "Bass"): 3 -> 65535)",
                  R"(song 1: voice-renumbered voices[0] (voice 8 "Horn"): voice 8 "Horn" -> voice 3)"));
}

TEST_F(ShowLosses, NameRunsOfMessagesWhoseChannelChanges) {
  Piano().messages = {
      {0, {0x91, 1, 1}}, {3, {0x90, 1, 1}}, {4, {0x80, 1, 1}}, {4, {0xB5, 1, 1}}, {5, {0xB1, 1, 1}}};
  EXPECT_THAT(
      Losses(),
      ElementsAre(
          R"(song 1: message-channel-renumbered messages[1] at 3 (voice 1 "Piano"): status 144 -> 145 x2)",
          R"(song 1: message-channel-renumbered messages[3] at 4 (voice 1 "Piano"): status 181 -> 177)"));
}

TEST_F(ShowLosses, NameMergedDrums) {
  AddVoice(9, "Drums")->messages = {{0, {0x99, 36, 1}}};
  AddVoice(10, "Drums")->messages = {{0, {0x99, 37, 1}}};
  EXPECT_THAT(
      Losses(),
      ElementsAre(
          R"(song 1: voice-renumbered voices[0] (voice 10 "Drums"): voice 10 "Drums" -> voice 9)",
          R"(song 1: voice-merged voices[0] (voice 10 "Drums"): voice 10 "Drums" -> voice 9 "Drums")"));
}

TEST_F(ShowLosses, NameMetersThatMoveToTheNextTempo) {
  Timeline().tempos.push_back({1000, 400000});
  Timeline().meters.push_back({960, 3, 4, 24, 8});
  EXPECT_THAT(Losses(),
              ElementsAre("song 1: meter-changed meters[1] at 960: 3/4 with 24 clocks and 8 32nds -> "
                          "3/4 with 24 clocks and 8 32nds"));
}

TEST_F(ShowLosses, NameDroppedAddedAndRoundedTempos) {
  Timeline().meters = {{480, 4, 4, 24, 8}};
  Timeline().tempos = {{0, 500000}, {480, 400000}};
  EXPECT_THAT(Losses(), ElementsAre("song 1: tempo-dropped tempos[0] at 0: 500000 us (120 bpm) -> "));
  Timeline().meters = {{0, 4, 4, 24, 8}, {960, 6, 8, 36, 8}};  // Another click needs a tempo record.
  Timeline().tempos = {{0, 500000}};
  EXPECT_THAT(Losses(), ElementsAre("song 1: tempo-added tempos[1] at 960:  -> 500000 us (120 bpm)"));
  Timeline().meters = {{0, 4, 4, 24, 8}};
  Timeline().tempos = {{0, 4000000001}};  // more digits than a single-precision float holds
  EXPECT_THAT(Losses(), ElementsAre("song 1: tempo-approximated tempos[0] at 0: 4000000001 us (0.015 bpm) -> "
                                    "3999999847 us (0.015 bpm)"));
}

TEST_F(ShowLosses, NameNarrowedKeysAndPages) {
  Timeline().keys = {{0, 128, 0}, {1, 0, 256}};
  Timeline().page_numbers = {{0, 65536}};
  EXPECT_THAT(Losses(), ElementsAre("song 1: key-cut keys[0] at 0: key 128 mode 0 -> key -128 mode 0",
                                    "song 1: key-cut keys[1] at 1: key 0 mode 256 -> key 0 mode 0",
                                    "song 1: page-number-cut pageNumbers[0] at 0: page 65536 -> page 0"));
}

/// A legacy show of one song that the current versions hold whole.
class UpLosses : public testing::Test {
 protected:
  UpLosses() {
    version0::SongData& song = Song();
    song.song_number = "1";
    song.division = 480;
    song.song_length = 1920;
    song.tracks.emplace_back(std::uint8_t{1}, "Piano");
    song.events[1].emplace_back(0U, 0U, std::uint8_t{0x90}, std::uint8_t{60}, std::uint8_t{100},
                                std::uint8_t{1});
    song.timeline.name = "1";
    song.timeline.song_length = 1920;
    song.timeline.meters.emplace_back(0U, std::uint8_t{4}, std::uint8_t{4});
    song.timeline.tempos.emplace_back(0U, 0.5F / 480, std::uint8_t{8}, std::uint8_t{8}, std::uint16_t{120});
  }

  version0::SongData& Song() { return legacy_.show.songs["1"]; }

  std::vector<std::string> Losses() const {
    const Document document(legacy_, {}, "show");
    const Document current = Up(document, {}, {1, 2});
    return Collected([&](const auto& sink) { LossesOfUp(document, current, sink); });
  }

  LegacyShow legacy_;
};

TEST_F(UpLosses, AreNoneWhereTheCurrentVersionsHoldEverything) { EXPECT_THAT(Losses(), IsEmpty()); }

TEST_F(UpLosses, NameCutLabels) {
  Song().timeline.bars_beats.emplace_back(0U, "1234567", std::uint8_t{0});
  Song().timeline.bars_beats.emplace_back(480U, "Prologue", std::uint8_t{0});
  EXPECT_THAT(
      Losses(),
      ElementsAre(R"(song 1: bar-label-cut barsBeats[1] at 480 in bar Prologue: "Prologue" -> "Prologu")"));
}

TEST_F(UpLosses, NameMergedTracks) {
  Song().tracks.emplace_back(std::uint8_t{9}, "Drums");
  Song().tracks.emplace_back(std::uint8_t{9}, "Drum Kit");
  EXPECT_THAT(Losses(),
              ElementsAre(R"(song 1: voice-merged voices[0]: "Drums", "Drum Kit" -> "Drum Kit" x2)"));
}

TEST_F(UpLosses, NameWhatIsComputedOnTheWayDown) {
  Song().timeline.tempos[0].bpm = 119;
  Song().timeline.name = "other";
  Song().timeline.song_length = 0;
  Song().events[1][0].delta_time = 7;
  Song().events[1][0].status_high = 0x92;
  EXPECT_THAT(
      Losses(),
      ElementsAre(
          "song 1: timeline-name-defaulted: other -> 1", "song 1: timeline-length-defaulted: 0 -> 1920",
          "song 1: tempo-approximated tempos[0] at 0: 0.00104166672 s a tick and 119 bpm with a click of 8 "
          "of 8 32nds -> 0.00104166672 s a tick and 120 bpm with a click of 8 of 8 32nds",
          "song 1: message-channel-renumbered messages[0] at 0 (track 1): status 146 -> 147",
          "song 1: delta-time-defaulted messages[0] at 0 (track 1): 7 -> 0"));
}

TEST_F(UpLosses, AreNoneForAChannelThatStaysAsItIs) {
  Song().events[1][0].status_high = 0x91;
  EXPECT_THAT(Losses(), IsEmpty());
}

TEST_F(UpLosses, NameTheOrderOfTheTracks) {
  Song().tracks.emplace(Song().tracks.begin(), std::uint8_t{5}, "Flute");
  EXPECT_THAT(Losses(), ElementsAre("song 1: voice-reordered voices[0]: 5, 1 -> 1, 5"));
  Song().tracks.emplace_back(std::uint8_t{5}, "Oboe");
  EXPECT_THAT(Losses(), ElementsAre("song 1: voice-reordered voices[0]: 5, 1 -> 1, 5",
                                    R"(song 1: voice-merged voices[0]: "Flute", "Oboe" -> "Oboe" x2)"));
}

TEST_F(UpLosses, NameEverythingBesideMetersInDisorder) {
  version0::Timeline& timeline = Song().timeline;
  timeline.name = "other";
  timeline.song_length = 7;
  timeline.bars_beats.emplace_back(0U, "Prologue", std::uint8_t{0});
  timeline.meters.clear();
  timeline.meters.emplace_back(10U, std::uint8_t{3}, std::uint8_t{4});
  timeline.meters.emplace_back(0U, std::uint8_t{4}, std::uint8_t{4});
  timeline.tempos[0].time = 12;
  EXPECT_THAT(
      Losses(),
      ElementsAre("song 1: timeline-name-defaulted: other -> 1",
                  "song 1: timeline-length-defaulted: 7 -> 1920",
                  R"(song 1: bar-label-cut barsBeats[0] at 0 in bar Prologue: "Prologue" -> "Prologu")",
                  "song 1: tempo-added tempos[1] at 12 in bar Prologue:  -> 500000 us (120 bpm)",
                  "song 1: meter-changed meters[0] at 10 in bar Prologue: 3/4 -> 3/4",
                  "song 1: meter-changed meters[1] at 0 in bar Prologue: 4/4 -> 4/4"));
}

TEST_F(UpLosses, NameTwoClicksAtOneTime) {
  Song().timeline.tempos.push_back(Song().timeline.tempos[0]);
  Song().timeline.meters[0].time = 0;
  Song().timeline.tempos[1].notated_32_per_click = 4;
  Song().timeline.tempos[1].bpm = 240;
  EXPECT_THAT(Losses(), ElementsAre("song 1: meter-added meters[1] at 0:  -> 4/4"));
}

TEST_F(UpLosses, NameTemposBeforeTheFirstMeter) {
  Song().timeline.meters[0].time = 480;
  Song().timeline.tempos.push_back(Song().timeline.tempos[0]);
  Song().timeline.tempos[1].time = 480;
  EXPECT_THAT(Losses(), ElementsAre(testing::StartsWith("song 1: tempo-dropped tempos[0] at 0: ")));
}

TEST_F(UpLosses, NameWhatTheFileHasBesides) {
  legacy_.replaced_songs = 2;
  legacy_.trailing_bytes = 3;
  legacy_.replaced_sequences = 4;
  EXPECT_THAT(Losses(), ElementsAre("song-replaced:  ->  x2", "sequence-replaced:  ->  x4",
                                    "trailing-bytes-dropped:  ->  x3"));
}

}  // namespace
}  // namespace zuna_toolkit
