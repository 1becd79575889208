// Two documents that were joined in one file: the first one comes back, and the report says where the second
// one is.
#include <gtest/gtest.h>

#include <utility>

#include "tests/support/legacy_samples.h"
#include "tests/support/rescue_accounts.h"
#include "tests/support/sample_models.h"
#include "tests/toolkit/rescue/rescue_samples.h"

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

TEST(RescueOfJoinedFiles, GivesBackBothOfOneVersion) {
  for (const cmn::FileVersion& version : cmn::SupportedVersions(cmn::FileKind::kShow)) {
    if (version.major != 1) continue;
    SCOPED_TRACE(cmn::VersionText(version));
    const std::string show = CurrentShow(version);
    const Rescued rescued = RescuedOf(show + show);
    EXPECT_EQ(zuna_test::WrongAccount(rescued.report, 2 * show.size()), "");
    EXPECT_EQ(rescued.report.saved(), 2U);
    EXPECT_FALSE(rescued.report.complete());
    EXPECT_EQ(rescued.report.remarks,
              (std::vector<std::string>{
                  "is not encrypted",
                  "two documents are joined: another one begins at byte " + std::to_string(show.size()),
                  "states 1 song, and 2 were found"}));
  }
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

TEST(RescueOfJoinedFiles, TellsThemWhereOneIsDamaged) {
  const std::string show = CurrentShow({1, 2});
  std::string damaged = show;
  damaged[damaged.size() - 1] ^= 1;  // its checksum
  for (const std::string& joined : {damaged + show, show + damaged}) {
    const Rescued rescued = RescuedOf(joined);
    EXPECT_EQ(rescued.report.saved(), 2U);
    EXPECT_EQ(rescued.report.remarks.at(1),
              "two documents are joined: another one begins at byte " + std::to_string(show.size()));
  }
}

TEST(RescueOfJoinedFiles, TakesTheSecondWhereNothingIsLeftOfTheFirst) {
  const std::string log = LegacyLog();
  const Rescued rescued = RescuedOf(LegacyShow().substr(0, 20) + log);
  EXPECT_EQ(rescued.report.saved(), 2U);
  EXPECT_FALSE(rescued.report.complete());
}

}  // namespace
