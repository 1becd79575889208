// What comes back of single songs of damaged files of current versions: voices, messages and edits.
#include <gtest/gtest.h>

#include "tests/support/sample_models.h"
#include "tests/toolkit/rescue/rescue_samples.h"

namespace {

using zuna_toolkit::Rescued;
using zuna_toolkit::SongState;
using Texts = std::vector<std::string>;

TEST(RescueOfACurrentSong, SavesTheVoicesOfASongWhereTwoHaveOneNumber) {
  zuna_midi::ShowData show = zuna_test::SampleShow();
  const auto second = std::make_shared<zuna_midi::VoiceTrack>();
  second->track_number = 2;
  second->name = "Second";
  second->messages = {{1, {0x90, 60, 100}}};
  show.songs().at("2b")->voice_data->AddTrack(second);
  std::string bytes = zuna_test::WrittenAt(show, {1, 2});
  bytes[bytes.find("Second") - 2] = '\1';
  const Rescued rescued = zuna_test::RescuedOf(bytes);
  ASSERT_EQ(rescued.report.songs.size(), 1U);
  EXPECT_EQ(rescued.report.songs[0].state, SongState::kPartly);
  EXPECT_EQ(rescued.report.songs[0].remarks, Texts{"its fields do not fit together"});
  EXPECT_EQ(rescued.report.unread, std::vector<zuna_toolkit::ByteRange>());
  const auto& song = *rescued.document.As<zuna_midi::ShowData>()->songs().at("2b");
  EXPECT_EQ(*song.voice_data->tracks().at(2), *second);
}

/// A show whose checksum begins with what may be a message: a small time, a status and two data bytes.
std::string WithAChecksumLikeAMessage() {
  zuna_midi::ShowData show = zuna_test::SampleShow();
  show.songs().at("2b")->voice_data->AddTrack([] {
    auto last = std::make_shared<zuna_midi::VoiceTrack>();
    last->track_number = 400;
    last->messages = {{1, {0x90, 60, 100}}};
    return last;
  }());
  for (unsigned i = 0;; ++i) {
    show.show_name = std::to_string(i);
    std::string bytes = zuna_test::WrittenAt(show, {1, 2});
    const auto at = [&](std::size_t offset) { return static_cast<unsigned char>(bytes[offset]); };
    const std::size_t checksum = bytes.size() - 4;
    if ((at(checksum) & 0x81) == 0 && (at(checksum + 1) & 0xF0) == 0x90 && at(checksum + 2) < 0x80 &&
        at(checksum + 3) < 0x80) {
      return bytes;
    }
  }
}

TEST(RescueOfACurrentSong, TakesNoMessageOutOfTheChecksum) {
  std::string bytes = WithAChecksumLikeAMessage();
  bytes[bytes.size() - 4 - 4 - 1] = '\2';  // the count of the last voice's messages
  const Rescued rescued = zuna_test::RescuedOf(bytes);
  const auto& song = *rescued.document.As<zuna_midi::ShowData>()->songs().at("2b");
  EXPECT_EQ(song.voice_data->tracks().at(400)->messages.size(), 1U);
}

TEST(RescueOfACurrentSong, SavesTheBeginningOfASongLogThatIsCut) {
  for (const cmn::FileVersion version : {cmn::FileVersion{1, 1}, {1, 2}}) {
    const std::string bytes = zuna_test::WrittenAt(zuna_test::SampleLog(), version);
    const Rescued rescued = zuna_test::RescuedOf(bytes.substr(0, bytes.find("til cue") + 3));
    ASSERT_EQ(rescued.report.songs.size(), 1U);
    EXPECT_EQ(rescued.report.songs[0].state, SongState::kPartly);
    EXPECT_EQ(rescued.document.As<CL::ChangeLog>()->song_logs().at("2b")->vamps->events.size(), 1U);
  }
}

TEST(RescueOfACurrentSong, TellsEventsThatNoWriterWrites) {
  zuna_midi::ShowData show = zuna_test::SampleShow();
  auto& messages = show.songs().begin()->second->voice_data->GetTrack(1)->messages;
  messages = {{480, {0x90, 60, 100}},
              {0, {0x90, 60, 0}},
              {480, {0xC1, 5, 0xFF}},
              {480, {0xF0, 1, 1}},
              {480, {0x80, 60, 0x80}}};
  for (const cmn::FileVersion& version : {cmn::FileVersion{1, 0}, {1, 1}, {1, 2}}) {
    const Rescued rescued = zuna_test::RescuedOf(zuna_test::WrittenAt(show, version));
    ASSERT_EQ(rescued.report.songs.size(), 1U);
    const bool is_vouched = version.minor > 0;  // its checksum is right
    EXPECT_EQ(rescued.report.songs[0].vouched, is_vouched);
    EXPECT_EQ(rescued.report.songs[0].state, is_vouched ? SongState::kWhole : SongState::kPartly);
    EXPECT_EQ(rescued.report.complete(), is_vouched);
    EXPECT_EQ(rescued.report.songs[0].remarks,
              (Texts{"2 events have bytes that no MIDI message has", "1 time goes back"}));
    EXPECT_EQ(rescued.document.As<zuna_midi::ShowData>()
                  ->songs()
                  .begin()
                  ->second->voice_data->GetTrack(1)
                  ->messages,
              messages);
  }
}

TEST(RescueOfACurrentSong, TakesDrumVoicesThatSharedALegacyTrack) {
  zuna_midi::ShowData show = zuna_test::SampleShow();
  zuna_midi::VoiceTrack& voice = *show.songs().begin()->second->voice_data->GetTrack(1);
  voice.name = "Drums";
  voice.messages = {{480, {0x90, 60, 100}}, {0, {0x90, 60, 0}}};
  EXPECT_TRUE(zuna_test::RescuedOf(zuna_test::WrittenAt(show, {1, 2})).report.complete());
}

}  // namespace
