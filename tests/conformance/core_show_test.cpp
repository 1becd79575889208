// What the converter relies on in the current show: the contracts in interfaces/zuna_midi, std_midi and TL.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "TL/timeline.h"
#include "std_midi/voice_message.h"
#include "tests/conformance/samples.h"
#include "zuna_midi/show_data.h"

namespace {

using conformance::Keys;
using conformance::SampleShow;
using conformance::Written;

TEST(ShowData, ComesBackAsItWasWritten) {
  const zuna_midi::ShowData before = SampleShow();
  std::istringstream is(Written(before));
  const zuna_midi::ShowData after(is);
  EXPECT_EQ(after.show_name, "Opera");
  ASSERT_EQ(Keys(after.songs()), Keys(before.songs()));
  const zuna_midi::SongData& expected = *before.songs().at("10");
  const zuna_midi::SongData& song = *after.songs().at("10");
  EXPECT_EQ(song.song_number, "10");
  EXPECT_EQ(song.song_name, "Tune");
  EXPECT_EQ(song.division, 480);
  EXPECT_EQ(song.song_length, 7680U);
  EXPECT_EQ(*song.timeline, *expected.timeline);
  ASSERT_EQ(song.voice_data->track_count(), 1);
  EXPECT_EQ(*song.voice_data->tracks().at(300), *expected.voice_data->tracks().at(300));
}

TEST(ShowData, WalksItsSongsByNumber) {
  EXPECT_EQ(Keys(SampleShow().songs()), (std::vector<std::string>{"2", "10"}));
}

TEST(ShowData, ReadsTheTextForm) {
  const std::string text = Written(SampleShow(), {2, 0});
  ASSERT_EQ(text.front(), cmn::kTextFormStart);
  std::istringstream is(text);
  EXPECT_EQ(Keys(zuna_midi::ShowData(is).songs()), (std::vector<std::string>{"2", "10"}));
}

TEST(ShowData, RefusesWhatIsNoShow) {
  std::istringstream is("no show");
  EXPECT_ANY_THROW(zuna_midi::ShowData{is});
}

TEST(SongData, BeginsWithoutVoicesAndTakesATimeline) {
  zuna_midi::SongData song("1", "Tune", 480, 7680);
  ASSERT_TRUE(song.voice_data);
  EXPECT_EQ(song.voice_data->track_count(), 0);
  const auto timeline = std::make_shared<TL::Timeline>();
  song.SetTimeline(timeline);
  EXPECT_EQ(song.timeline, timeline);
}

TEST(VoiceData, HasNoTrackThatWasNotAdded) {
  zuna_midi::VoiceData voices;
  const auto track = std::make_shared<zuna_midi::VoiceTrack>();
  track->track_number = 7;
  voices.AddTrack(track);
  EXPECT_EQ(voices.GetTrack(7), track.get());
  EXPECT_THROW(voices.GetTrack(8), std::out_of_range);
}

TEST(Tempo, IsMeasuredInTicksAndClicks) {
  const TL::Tempo tempo{0, 500000};
  EXPECT_DOUBLE_EQ(tempo.tick_time(480), 0.5 / 480);
  EXPECT_DOUBLE_EQ(tempo.bpm(24), 120);
  EXPECT_DOUBLE_EQ(tempo.bpm(12), 240);
  EXPECT_DOUBLE_EQ((TL::Tempo{0, 545455}).bpm(24), 110);  // what the microseconds were rounded from
}

TEST(Meter, NotatedNotesInAClickAreTheInverseOfClocksInAClick) {
  EXPECT_EQ((TL::Meter{0, 4, 4, 24, 8}).notated_32_per_click(), 8);
  EXPECT_EQ((TL::Meter{0, 6, 8, 36, 8}).notated_32_per_click(), 12);
}

TEST(BarsBeats, HoldsSevenBytes) {
  TL::BarsBeats bar;
  bar.bar_number("12a");
  EXPECT_STREQ(bar.bar_number(), "12a");
  bar.bar_number("1234567890");
  EXPECT_STREQ(bar.bar_number(), "1234567");
}

TEST(VoiceMessage, IsWrittenAsText) {
  std::ostringstream os;
  std_midi::VoiceMessage(0xC0, 12, 0).WriteString(os);
  EXPECT_EQ(os.str(), "Program Change(channel 1, 12)");
}

}  // namespace
