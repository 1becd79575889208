// What the converter relies on in the current log: the contracts in interfaces/CL, cmn and codes.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "CL/change_log.h"
#include "codes/zuna_event_codes.h"
#include "kit/cout_buffer.h"
#include "tests/conformance/samples.h"

namespace {

using conformance::kCurrent;
using conformance::Keys;
using conformance::SampleLog;
using conformance::Written;

using testing::HasSubstr;
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

TEST(ChangeLog, IsEmptyAtFirst) {
  const CL::ChangeLog log;
  EXPECT_EQ(log.show_name + log.log_label, "");
  EXPECT_TRUE(log.identifier == kit::UUID::Nil());
  EXPECT_EQ(log.log_tag_pair.first + log.log_tag_pair.second, 0);
  EXPECT_TRUE(log.song_logs().empty());
}

TEST(ChangeLog, ASongLogCanBeChangedThroughBothFormsOfGetSongLog) {
  CL::ChangeLog log = SampleLog();
  log.GetSongLog("10")->attacca = 2;
  const CL::ChangeLog& unchanging = log;
  unchanging.GetSongLog("10")->fermatas->events.emplace_back(1, 2, "", 3);
  EXPECT_EQ(log.song_logs().at("10")->attacca, 2);
  EXPECT_EQ(log.song_logs().at("10")->fermatas->events.size(), 2U);
}

TEST(ChangeLog, RefusesWhatIsNoLog) {
  std::istringstream is("no log");
  EXPECT_ANY_THROW(CL::ChangeLog{is});
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

TEST(PairedEvent, HasItsPositionsItsValueAndItsCode) {
  const CL::Transpose transpose(480, 960, "", -12);
  EXPECT_EQ(transpose.label, "");
  EXPECT_EQ(transpose.Position(), 480U);
  EXPECT_EQ(transpose.StartPosition(), 480U);
  EXPECT_EQ(transpose.EndPosition(), 960U);
  EXPECT_EQ(transpose.IntValue(), -12);
  EXPECT_EQ(transpose.EventCode(), codes::kTranspose);
  const CL::TempoScale scale(0, 10, "", 1.5F);
  EXPECT_EQ(scale.FloatValue(), 1.5F);
  EXPECT_EQ(CL::Vamp(0, 0, "", 0).EventCode(), CL::Vamp::evt_code);
  EXPECT_EQ(CL::Fermata(0, 0, "", 0).EventCode(), CL::Fermata::evt_code);
}

TEST(PairedEvent, CanBeChanged) {
  CL::Cut cut(0, 0, "", 0);
  cut.SetStartPosition(7);
  cut.SetEndPosition(9);
  cut.SetIntValue(-3);
  EXPECT_EQ(cut.start, 7U);
  EXPECT_EQ(cut.end, 9U);
  EXPECT_EQ(cut.IntValue(), -3);
  cut.SetFloatValue(0.1);  // narrowed
  EXPECT_EQ(cut.FloatValue(), 0.1F);
}

TEST(PairedEvent, ComparesItsStartWithAPosition) {
  const CL::Cut cut(7, 9, "", 0);
  EXPECT_TRUE(cut.PositionLess(8) && !cut.PositionLess(7));
  EXPECT_TRUE(cut.PositionGreater(6) && !cut.PositionGreater(7));
  EXPECT_TRUE(cut.PositionEqual(7) && !cut.PositionEqual(8));
  EXPECT_TRUE(cut.PositionNotLess(7) && !cut.PositionNotLess(8));
  EXPECT_TRUE(cut.PositionNotGreater(7) && !cut.PositionNotGreater(6));
  EXPECT_TRUE(cut == CL::Cut(7, 8, "", 1) && cut != CL::Cut(8, 9, "", 0));
  EXPECT_TRUE(cut < CL::Cut(8, 9, "", 0) && !(cut < CL::Cut(7, 9, "", 0)));
}

TEST(PairedEvent, ReachesFromStartToEnd) {
  EXPECT_EQ(CL::Cut(7, 9, "", 0).Span(), 2U);
  EXPECT_EQ(CL::Cut(9, 7, "", 0).Span(), 0U);
}

TEST(PairedEvent, FillsAndClearsWhatADisplayKeeps) {
  const CL::Cut cut(7, 9, "", 0);
  CL::DisplayRecord record{1, 2, 3, 4, 5, 6};
  cut.FillDisplayRecord(record);
  EXPECT_EQ(record.x + record.y + record.width + record.height, 0);
  EXPECT_EQ(record.anchor_x, 0.5F);
  EXPECT_EQ(record.anchor_y, 0.5F);
  CL::DisplayWords words{1, 2, 3, 4, 5, 6};
  cut.ClearDisplayWords(words);
  EXPECT_EQ(words, CL::DisplayWords{});
  EXPECT_EQ(cut.Reserved4(), 0);
  EXPECT_TRUE(cut.Reserved5());
}

TEST(PointEvents, HaveTheirPositionAndTheirText) {
  const CL::Caesura caesura(960, "");
  EXPECT_EQ(caesura.position, 960U);
  EXPECT_EQ(caesura.second_word, 0U);
  const CL::Marker marker(480, "", "A");
  EXPECT_EQ(marker.position, 480U);
  EXPECT_EQ(marker.text, "A");
}

TEST(Events, AreWrittenAsText) {
  std::ostringstream os;
  CL::Cut(7, 9, "", 1).WriteString(os);
  EXPECT_NE(os.str(), "");
  testing::internal::CaptureStdout();
  {
    kit::CoutBuffer buffer;
    CL::Cut(7, 9, "", 1).WriteString(buffer);
  }
  EXPECT_EQ(testing::internal::GetCapturedStdout(), os.str());
}

TEST(EventCodes, EveryEditHasAName) {
  for (const std::uint8_t code :
       {codes::kVamp, codes::kRepeat, codes::kCut, codes::kTranspose, codes::kTempoScale, codes::kMarker,
        codes::kClick, codes::kFermata, codes::kCaesura}) {
    EXPECT_NE(codes::editNameByZunaEventCode.at(code), "") << int{code};
  }
}

}  // namespace
