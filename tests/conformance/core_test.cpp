// What the converter relies on in the core library: the contracts in interfaces/cmn, codes, CL, TL, std_midi
// and zuna_midi.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "CL/change_log.h"
#include "TL/timeline.h"
#include "cmn/version_probe.h"
#include "codes/zuna_event_codes.h"
#include "std_midi/voice_message.h"
#include "zuna_midi/show_data.h"

namespace {

using testing::HasSubstr;

constexpr cmn::FileVersion kLegacy{0, 0};
constexpr cmn::FileVersion kCurrent{1, 2};

/// A show of two songs, one of them with a voice and something in every list of its timeline.
zuna_midi::ShowData SampleShow() {
  const auto song = std::make_shared<zuna_midi::SongData>("10", "Tune", 480, 7680);
  song->timeline->tempos = {{0, 500000}};
  song->timeline->meters = {{0, 4, 4, 24, 8}};
  song->timeline->keys = {{0, -3, 1}};
  song->timeline->page_numbers = {{0, 70000}};
  TL::BarsBeats bar;
  bar.bar_number("1a");
  bar.tag = 7;
  song->timeline->bars_beats = {bar};
  const auto track = std::make_shared<zuna_midi::VoiceTrack>();
  track->track_number = 300;
  track->name = "Piano";
  track->messages = {{0, {0x90, 60, 100}}, {480, {0x80, 60, 0}}};
  song->voice_data->AddTrack(track);
  zuna_midi::ShowData show;
  show.show_name = "Opera";
  show.AddSongData(song);
  show.AddSongData(std::make_shared<zuna_midi::SongData>("2", "Other", 96, 100));
  return show;
}

/// A log of two songs, one of them with an edit of every class.
CL::ChangeLog SampleLog() {
  const auto song = std::make_shared<CL::SongLog>("10", "Tune", 480, 7680);
  song->attacca = 1;
  song->vamps->events.emplace_back(0, 480, "", 2);
  song->repeats->events.emplace_back(480, 960, "", 3);
  song->cuts->events.emplace_back(960, 1440, "", -1);
  song->transposes->events.emplace_back(0, 7680, "", -12);
  song->tempo_scales->events.emplace_back(0, 7680, "", 1.5F);
  song->markers->events.emplace_back(0, "", "A");
  song->clicks->events.emplace_back(0, 7680, "", 1);
  song->fermatas->events.emplace_back(100, 200, "", 4);
  song->caesuras->events.emplace_back(960, "");
  CL::ChangeLog log;
  log.show_name = "Opera";
  log.log_label = "First night";
  log.log_tag_pair = {1, 2};
  log.AddSongLog(song);
  log.AddSongLog(std::make_shared<CL::SongLog>("2", "Other", 96, 100));
  return log;
}

template <typename Model>
std::string Written(const Model& model, cmn::FileVersion version = kCurrent) {
  std::ostringstream os;
  model.WriteBinary(os, version);
  return os.str();
}

template <typename Map>
std::vector<std::string> Keys(const Map& map) {
  std::vector<std::string> keys;
  for (const auto& entry : map) keys.push_back(entry.first);
  return keys;
}

/// A text of a legacy file: its length in one byte, then the text.
std::string LegacyText(const std::string& text) { return static_cast<char>(text.size()) + text; }

/// The beginning of a legacy show: the count of its songs, a number and a name.
const std::string kLegacyShow = '\1' + LegacyText("12") + LegacyText("Tune") + std::string(20, '\0');

/// A legacy log without songs.
const std::string kLegacyLog = "ZUNA" +                                     //
                               std::string("\x20\0\0\0", 4) +               // log length: 16 + 6 + 6 + 4
                               std::string(16, '\x11') +                    // identifier
                               LegacyText("label") + LegacyText("Opera") +  // log label, show name
                               std::string(4, '\0');                        // log tag pair

TEST(VersionProbe, FindsCurrentAndLegacyVersions) {
  std::istringstream show(Written(SampleShow()));
  EXPECT_EQ(cmn::get_showdata_version(show), kCurrent);
  std::istringstream log(Written(SampleLog()));
  EXPECT_EQ(cmn::get_logdata_version(log), kCurrent);
  std::istringstream legacy_show(kLegacyShow);
  EXPECT_EQ(cmn::get_showdata_version(legacy_show), kLegacy);
  std::istringstream legacy_log(kLegacyLog);
  EXPECT_EQ(cmn::get_logdata_version(legacy_log), kLegacy);
}

TEST(VersionProbe, LooksAtTheBeginningWhereverTheStreamStands) {
  std::istringstream legacy(kLegacyLog);
  legacy.seekg(8);  // after the test that the log is complete
  EXPECT_EQ(cmn::get_logdata_version(legacy), kLegacy);
  std::istringstream current(Written(SampleLog()));
  current.seekg(0, std::ios_base::end);
  EXPECT_EQ(cmn::get_logdata_version(current), kCurrent);
}

TEST(VersionProbe, LeavesPositionStateAndMaskAsTheyWere) {
  std::istringstream is(Written(SampleShow()));
  is.seekg(3);
  is.setstate(std::ios_base::eofbit);
  cmn::get_showdata_version(is);
  EXPECT_EQ(is.rdstate(), std::ios_base::eofbit);
  EXPECT_EQ(is.exceptions(), std::ios_base::goodbit);
  is.clear();
  EXPECT_EQ(is.tellg(), 3);
}

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

TEST(VoiceData, HasNoTrackThatWasNotAdded) {
  zuna_midi::VoiceData voices;
  const auto track = std::make_shared<zuna_midi::VoiceTrack>();
  track->track_number = 7;
  voices.AddTrack(track);
  EXPECT_EQ(voices.GetTrack(7), track.get());
  EXPECT_THROW(voices.GetTrack(8), std::out_of_range);
}

TEST(ChangeLog, ComesBackAsItWasWritten) {
  const CL::ChangeLog before = SampleLog();
  std::istringstream is(Written(before));
  const CL::ChangeLog after(is);
  EXPECT_EQ(after.show_name, "Opera");
  EXPECT_EQ(after.log_label, "First night");
  EXPECT_EQ(after.log_tag_pair, before.log_tag_pair);
  EXPECT_TRUE(after.identifier == before.identifier);
  EXPECT_EQ(after.file_version, kCurrent);
  ASSERT_EQ(Keys(after.song_logs()), Keys(before.song_logs()));
  EXPECT_EQ(after.GetSongLog("10")->attacca, 1);
  EXPECT_EQ(after.GetSongLog("10")->division, 480);
  std::ostringstream expected;
  before.GetSongLog("10")->WriteStringDetailed(expected, 0);
  std::ostringstream found;
  after.GetSongLog("10")->WriteStringDetailed(found, 0);
  EXPECT_EQ(found.str(), expected.str());
}

TEST(ChangeLog, WalksItsSongLogsInByteOrder) {
  EXPECT_EQ(Keys(SampleLog().song_logs()), (std::vector<std::string>{"10", "2"}));
}

TEST(ChangeLog, ReadsTheTextFormAndSetsItsVersion) {
  const std::string text = Written(SampleLog(), {2, 0});
  ASSERT_EQ(text.front(), cmn::kTextFormStart);
  std::istringstream is(text);
  EXPECT_EQ(CL::ChangeLog(is).file_version, (cmn::FileVersion{2, 0}));
}

TEST(ChangeLog, HasNoSongLogThatWasNotAdded) {
  CL::ChangeLog log = SampleLog();
  EXPECT_EQ(log.GetSongLog("2")->song_name, "Other");
  try {
    log.GetSongLog("3");
    FAIL();
  } catch (const std::out_of_range& error) {
    EXPECT_THAT(error.what(), HasSubstr("3"));
  }
}

TEST(SongLog, HasEveryListFromTheStart) {
  const CL::SongLog song("1", "Tune", 0, 0);
  EXPECT_TRUE(song.vamps && song.repeats && song.cuts && song.transposes && song.tempo_scales);
  EXPECT_TRUE(song.markers && song.clicks && song.fermatas && song.caesuras);
}

TEST(PairedEvent, HasItsPositionsAndItsValue) {
  const CL::Transpose transpose(480, 960, "", -12);
  EXPECT_EQ(transpose.StartPosition(), 480U);
  EXPECT_EQ(transpose.EndPosition(), 960U);
  EXPECT_EQ(transpose.IntValue(), -12);
  EXPECT_EQ(transpose.EventCode(), codes::kTranspose);
  const CL::TempoScale scale(0, 10, "", 1.5F);
  EXPECT_EQ(scale.FloatValue(), 1.5F);
}

TEST(EventCodes, EveryEditHasAName) {
  for (const std::uint8_t code :
       {codes::kVamp, codes::kRepeat, codes::kCut, codes::kTranspose, codes::kTempoScale, codes::kMarker,
        codes::kClick, codes::kFermata, codes::kCaesura}) {
    EXPECT_NE(codes::editNameByZunaEventCode.at(code), "") << int{code};
  }
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
