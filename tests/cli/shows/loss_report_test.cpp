#include "cli/shows/loss_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zuna_cli {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A show of one song that format 0.0 holds whole.
class LossReport : public testing::Test {
 protected:
  LossReport() {
    song_ = std::make_shared<zuna_midi::SongData>("1", "Song", static_cast<unsigned short>(480), 1920U);
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

  std::vector<std::string> Texts() {
    std::vector<std::string> texts;
    for (const Loss& loss : DownLosses(show_, version0::ShowData(show_))) texts.push_back(LossText(loss));
    return texts;
  }

  zuna_midi::ShowData show_;
  std::shared_ptr<zuna_midi::SongData> song_;
};

TEST_F(LossReport, IsEmptyWhereNothingIsLost) {
  AddVoice(2, "Bass")->messages = {{0, {0xC2, 1, 0}}, {5, {0xE2, 1, 2}}};
  AddVoice(9, "Drums")->messages = {{0, {0x99, 36, 1}}};
  Timeline().keys = {{0, -7, 1}};
  Timeline().page_numbers = {{0, 65535}};
  EXPECT_THAT(Texts(), IsEmpty());
}

TEST_F(LossReport, TellsTheShowName) {
  show_.show_name = "Gala";
  EXPECT_THAT(Texts(), ElementsAre("1 show name (\"Gala\"; up takes it from the log)"));
}

TEST_F(LossReport, CountsVoiceNumbersAndReservedFields) {
  AddVoice(7, "Bass")->reserved = 3;
  AddVoice(8, "Horn");
  EXPECT_THAT(Texts(), ElementsAre("2 voice numbers (song 1: voice 7 \"Bass\" becomes voice 2)",
                                   "1 reserved field (song 1: voice 7 \"Bass\": 3)"));
}

TEST_F(LossReport, CountsChannels) {
  Piano().messages = {{0, {0x91, 1, 1}}, {3, {0x90, 1, 1}}, {4, {0xB5, 1, 1}}};
  EXPECT_THAT(Texts(),
              ElementsAre("2 message channels (song 1: voice 1 \"Piano\" at 3: status 144 becomes 145)"));
}

TEST_F(LossReport, CountsMergedDrums) {
  AddVoice(9, "Drums")->messages = {{0, {0x99, 36, 1}}};
  AddVoice(10, "Drums")->messages = {{0, {0x99, 37, 1}}};
  EXPECT_THAT(Texts(),
              ElementsAre("1 voice number (song 1: voice 10 \"Drums\" becomes voice 9)",
                          "1 voice of its own (song 1: voice 10 \"Drums\" joins voice 9 \"Drums\")"));
}

TEST_F(LossReport, TellsMetersThatMoveToTheNextTempo) {
  Timeline().tempos.push_back({1000, 400000});
  Timeline().meters.push_back({960, 3, 4, 24, 8});
  EXPECT_THAT(Texts(),
              ElementsAre("1 meter (song 1: 3/4 with 24 clocks and 8 32nds at 960 becomes 3/4 with 24 "
                          "clocks and 8 32nds at 1000)"));
}

TEST_F(LossReport, TellsTemposBeforeTheFirstMeter) {
  Timeline().meters = {{480, 4, 4, 24, 8}};
  Timeline().tempos = {{0, 500000}, {480, 400000}};
  EXPECT_THAT(Texts(), ElementsAre("1 tempo (song 1: 500000 us at 0 is dropped)"));
}

TEST_F(LossReport, TellsTemposThatAreAdded) {
  Timeline().meters.push_back({960, 6, 8, 36, 8});  // Another click needs a tempo record to hold it.
  EXPECT_THAT(Texts(), ElementsAre("1 additional tempo (song 1: 500000 us at 960)"));
}

TEST_F(LossReport, TellsNarrowedKeysAndPages) {
  Timeline().keys = {{0, 128, 0}, {1, 0, 256}};
  Timeline().page_numbers = {{0, 65536}};
  EXPECT_THAT(Texts(), ElementsAre("2 keys (song 1: key 128 mode 0 at 0 becomes key -128 mode 0 at 0)",
                                   "1 page number (song 1: page 65536 at 0 becomes page 0 at 0)"));
}

TEST_F(LossReport, TellsRoundedTempos) {
  Timeline().tempos = {{0, 4000000001}};  // more digits than a single-precision float holds
  EXPECT_THAT(Texts(), ElementsAre("1 tempo (song 1: 4000000001 us at 0 becomes 3999999847 us at 0)"));
}

}  // namespace
}  // namespace zuna_cli
