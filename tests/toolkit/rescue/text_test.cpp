// The report of a rescue of text forms.
#include "toolkit/rescue/rescue.h"

#include <gtest/gtest.h>

#include "tests/support/sample_models.h"
#include "tests/toolkit/rescue/rescue_samples.h"

namespace {

using namespace std::string_literals;
using zuna_test::RescuedOf;
using zuna_toolkit::Rescued;
using zuna_toolkit::SongState;

using Texts = std::vector<std::string>;

std::string Text() { return zuna_test::WrittenAt(zuna_test::SampleShow(), {2, 0}); }

std::string SongText() {
  return R"({"songName": "Go", "songNumber": "1", "division": 480, "songLength": 1, "timeline": {"tempos": [], )"
         R"("barsBeats": [], "keys": [], "pageNumbers": [], "meters": []}, "voices": []})";
}

TEST(RescueOfAText, TakesSongsOfATextInAnyOrderOfKeys) {
  std::string text = R"({"kind": "showdata", "fileVersion": "2.0", "songs": [)";
  text += SongText() + ", {\"songNumber\": \"2\"}], \"showName\": \"}]\\\"\"}";
  const Rescued rescued = RescuedOf(text);
  EXPECT_EQ(rescued.document.As<zuna_midi::ShowData>()->show_name, "}]\"");
  ASSERT_EQ(rescued.report.songs.size(), 2U);
  EXPECT_EQ(rescued.report.songs.at(0).name, "Go");
  EXPECT_EQ(rescued.report.songs.at(1).state, SongState::kLost);
  EXPECT_EQ(rescued.report.songs.at(1).number, "2");
  EXPECT_EQ(rescued.report.songs.at(1).remarks, Texts{"its text is not complete and correct"});
}

TEST(RescueOfAText, SkipsAByteOrderMarkBeforeAText) {
  for (const std::string& front : {"\xEF\xBB\xBF"s, "\xEF\xBB\xBF\r\n"s}) {
    const Rescued rescued = RescuedOf(front + Text());
    EXPECT_TRUE(rescued.report.complete());
    EXPECT_EQ(rescued.report.remarks,
              (Texts{"is not encrypted", "a byte order mark stands before its text"}));
    EXPECT_EQ(rescued.document.As<zuna_midi::ShowData>()->show_name, "Hä");
    const std::string damaged = front + Text().substr(0, Text().find_last_of(']'));
    EXPECT_EQ(RescuedOf(damaged).report.missing, Texts{"the end of the text"});
    EXPECT_EQ(RescuedOf(damaged).report.songs.at(0).offset, damaged.find("{", front.size() + 1));
  }
}

TEST(RescueOfAText, NamesALostSongByWhatStandsForItsNumber) {
  for (const std::string number : {"17", " 17 ", "\n17"}) {
    std::string text = Text();
    const std::size_t at = text.find("\"2b\"");
    text.replace(at, 4, number);
    const Rescued rescued = RescuedOf(text.insert(text.rfind(']'), "," + SongText()));
    const auto& lost = rescued.report.songs.at(0);
    EXPECT_EQ(lost.state, SongState::kLost);
    EXPECT_EQ(lost.number, "17");
    EXPECT_EQ(lost.name, "Go");
  }
}

TEST(RescueOfAText, TellsAVersionThatIsNotKnown) {
  for (const std::string version : {"2.1", "2.10"}) {
    std::string text = Text();
    text.replace(text.find("2.0"), 3, version);
    const Rescued rescued = RescuedOf(text);
    EXPECT_TRUE(rescued.report.complete());
    EXPECT_EQ(rescued.document.As<zuna_midi::ShowData>()->show_name, "Hä");
    EXPECT_EQ(
        rescued.report.remarks,
        (Texts{"is not encrypted", "states version " + version +
                                       ", which this release does not know; it is read as version 2.0"}));
  }
}

TEST(RescueOfAText, TellsThatTheEndOfATextIsMissing) {
  const std::string text = Text();
  const Rescued rescued = RescuedOf(text.substr(0, text.find_last_of(']')));
  EXPECT_EQ(rescued.report.missing, Texts{"the end of the text"});
  EXPECT_EQ(rescued.report.saved(), 1U);
  EXPECT_EQ(rescued.document.As<zuna_midi::ShowData>()->show_name, "Hä");
}

TEST(RescueOfAText, TellsThatTheHeadOfATextIsMissing) {
  std::string text = Text();
  text[1] = 'x';
  const Rescued rescued = RescuedOf(text);
  EXPECT_EQ(rescued.report.missing, Texts{"the show's name"});
  EXPECT_EQ(rescued.report.saved(), 1U);
}

}  // namespace
