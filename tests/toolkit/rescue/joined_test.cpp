// Documents that were joined in one file: the first one comes back, those of its kind and version too, and
// the report says where the second one is.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <utility>

#include "tests/support/legacy_samples.h"
#include "tests/support/rescue_accounts.h"
#include "tests/support/sample_models.h"
#include "tests/toolkit/rescue/rescue_samples.h"
#include "toolkit/document/text_form.h"

namespace {

using zuna_test::RescuedOf;
using zuna_toolkit::Rescued;

std::string CurrentShow(const cmn::FileVersion& version) {
  return zuna_test::WrittenAt(zuna_test::SampleShow(), version);
}

std::string LegacyShow() { return zuna_test::Written(zuna_test::SampleLegacyShow()); }

std::string LegacyLog() { return zuna_test::Written(zuna_test::SampleLegacyLog()); }

/// What comes back of `first` and `second` in one file. Nothing of `first` is lost.
Rescued RescuedOfJoined(const std::string& first, const std::string& second) {
  Rescued rescued = RescuedOf(first + second);
  EXPECT_EQ(zuna_test::WrongAccount(rescued.report, first.size() + second.size()), "");
  EXPECT_FALSE(rescued.report.complete());
  EXPECT_EQ(rescued.document.type(), RescuedOf(first).document.type());
  EXPECT_EQ(rescued.report.saved(), RescuedOf(first).report.saved());
  const std::string place = std::to_string(first.size());
  EXPECT_EQ(rescued.report.remarks.at(1), "two documents are joined: another one begins at byte " + place);
  EXPECT_EQ(rescued.report.missing,
            std::vector<std::string>{"the document that begins at byte " + place + " of the content"});
  EXPECT_EQ(rescued.report.unread,
            (std::vector<zuna_toolkit::ByteRange>{{first.size(), first.size() + second.size()}}));
  return rescued;
}

using Texts = std::vector<std::string>;

/// A show of one song, of this number.
std::string ShowOf(const std::string& number, const cmn::FileVersion& version) {
  zuna_midi::ShowData show;
  const auto song = zuna_test::SampleShow().songs().begin()->second;
  song->song_number = number;
  show.AddSongData(song);
  show.show_name = "Show " + number;
  return zuna_test::WrittenAt(show, version);
}

TEST(RescueOfJoinedFiles, GivesBackBothOfOneVersion) {
  for (const cmn::FileVersion& version : cmn::SupportedVersions(cmn::FileKind::kShow)) {
    if (version.major != 1) continue;
    SCOPED_TRACE(cmn::VersionText(version));
    const std::string first = ShowOf("2", version);
    const std::string place = std::to_string(first.size());
    const Rescued rescued = RescuedOf(first + ShowOf("1", version));
    ASSERT_EQ(rescued.report.songs.size(), 2U);
    for (const auto& song : rescued.report.songs) {
      EXPECT_EQ(song.state, zuna_toolkit::SongState::kWhole);
      EXPECT_EQ(song.vouched, version.minor > 0) << "its checksum is right";
    }
    EXPECT_FALSE(rescued.report.complete());
    EXPECT_EQ(rescued.report.remarks,
              (Texts{"is not encrypted", "two documents are joined: another one begins at byte " + place}));
    EXPECT_EQ(rescued.report.missing, Texts{"the show's name of the document that begins at byte " + place});
    EXPECT_EQ(rescued.report.stated_songs, 2U);
    EXPECT_EQ(rescued.report.known_songs, 2U);
    EXPECT_EQ(rescued.document.As<zuna_midi::ShowData>()->show_name, "Show 2");
  }
}

TEST(RescueOfJoinedFiles, GivesBackAllOfOneVersion) {
  std::string joined;
  std::vector<std::size_t> places;
  for (const char* number : {"1", "2", "1"}) {
    places.push_back(joined.size());
    joined += ShowOf(number, {1, 2});
  }
  const Rescued rescued = RescuedOf(joined);
  ASSERT_EQ(rescued.report.songs.size(), 3U);
  EXPECT_EQ(rescued.report.songs[2].number, "1 (2)");
  EXPECT_TRUE(rescued.report.songs[2].vouched);
  EXPECT_EQ(rescued.report.remarks.at(1),
            "3 documents are joined: the second one begins at byte " + std::to_string(places[1]));
  EXPECT_EQ(rescued.report.missing,
            (Texts{"the show's name of the document that begins at byte " + std::to_string(places[1]),
                   "the show's name of the document that begins at byte " + std::to_string(places[2])}));
}

TEST(RescueOfJoinedFiles, GivesBackBothLogsOfOneVersion) {
  const std::string log = zuna_test::WrittenAt(zuna_test::SampleLog(), {1, 2});
  const Rescued rescued = RescuedOf(log + log);
  EXPECT_EQ(rescued.report.saved(), 2 * RescuedOf(log).report.saved());
  EXPECT_EQ(rescued.report.missing,
            Texts{"the head of the log: show name, label, identifier and tag pair of the document that "
                  "begins at byte " +
                  std::to_string(log.size())});
  EXPECT_EQ(rescued.document.As<CL::ChangeLog>()->log_label, "A");
}

TEST(RescueOfJoinedFiles, GivesBackTheOthersWhereNothingIsLeftOfOne) {
  const std::string first = ShowOf("1", {1, 2});
  std::string second = ShowOf("2", {1, 2});
  const std::string place = std::to_string(first.size());
  std::fill(second.begin() + 10, second.end(), '\xFF');
  const Rescued rescued = RescuedOf(first + second + ShowOf("3", {1, 2}));
  ASSERT_EQ(rescued.report.songs.size(), 2U);
  EXPECT_EQ(rescued.report.songs[1].number, "3");
  EXPECT_EQ(rescued.report.missing.at(1), "the document that begins at byte " + place + " of the content");
  EXPECT_EQ(rescued.report.unread,
            (std::vector<zuna_toolkit::ByteRange>{{first.size(), first.size() + second.size()}}));
}

TEST(RescueOfJoinedFiles, FindsNoSecondLogWhereTheLengthOfALogEnds) {
  const std::string log = LegacyLog();
  const Rescued rescued = RescuedOf(log + log);
  EXPECT_EQ(rescued.report.saved(), 4U);
  EXPECT_EQ(rescued.report.missing, std::vector<std::string>());
}

TEST(RescueOfJoinedFiles, TellsMixedOnes) {
  RescuedOfJoined(CurrentShow({2, 0}), CurrentShow({2, 0}));
  RescuedOfJoined(CurrentShow({1, 1}), CurrentShow({1, 2}));
  RescuedOfJoined(LegacyShow(), CurrentShow({2, 0}));
  RescuedOfJoined(CurrentShow({2, 0}), LegacyShow());
  RescuedOfJoined(CurrentShow({1, 2}), CurrentShow({2, 0}));
  RescuedOfJoined(CurrentShow({1, 2}), LegacyShow());
  RescuedOfJoined(LegacyShow(), LegacyLog());
  RescuedOfJoined(LegacyLog(), CurrentShow({1, 1}));
  RescuedOfJoined(LegacyLog(), LegacyShow());
}

TEST(RescueOfJoinedFiles, TellsTextsOfEveryVersion) {
  const auto text_of = [](const zuna_toolkit::Document& document) {
    std::ostringstream text;
    zuna_toolkit::WriteTextForm(document, text);
    return text.str();
  };
  const std::vector<std::string> texts = {
      text_of({zuna_test::SampleShow(), {1, 2}, ""}), text_of({zuna_test::SampleLog(), {1, 1}, ""}),
      text_of({zuna_toolkit::LegacyShow{zuna_test::SampleLegacyShow()}, zuna_toolkit::kLegacyVersion, ""}),
      text_of({zuna_test::SampleShow(), {2, 0}, ""})};
  for (const std::string& first : texts) {
    for (const std::string& second : texts) RescuedOfJoined(first, second);
  }
}

TEST(RescueOfJoinedFiles, TellsThemWhereOneIsDamaged) {
  const std::string show = ShowOf("1", {1, 2});
  const std::string place = std::to_string(show.size());
  std::string damaged = ShowOf("2", {1, 2});
  damaged[damaged.size() - 1] ^= 1;  // its checksum
  for (const bool is_second : {false, true}) {
    const Rescued rescued = RescuedOf(is_second ? show + damaged : damaged + show);
    ASSERT_EQ(rescued.report.songs.size(), 2U);
    EXPECT_EQ(rescued.report.songs[is_second ? 0 : 1].vouched, true);
    EXPECT_EQ(rescued.report.songs[is_second ? 1 : 0].vouched, false);
    EXPECT_TRUE(rescued.report.changed);
    EXPECT_EQ(rescued.report.songs[is_second ? 1 : 0].offset, 10 + 1 + 6 + 1 + (is_second ? show.size() : 0));
    const std::string remark = "its checksum is wrong or missing";
    EXPECT_EQ(rescued.report.remarks,
              (Texts{"is not encrypted", "two documents are joined: another one begins at byte " + place,
                     is_second ? "in the document that begins at byte " + place + ": " + remark : remark}));
  }
}

TEST(RescueOfJoinedFiles, TakesTheSecondWhereNothingIsLeftOfTheFirst) {
  const std::string log = LegacyLog();
  const Rescued rescued = RescuedOf(LegacyShow().substr(0, 20) + log);
  EXPECT_EQ(rescued.report.saved(), 2U);
  EXPECT_FALSE(rescued.report.complete());
}

}  // namespace
