// The report of a rescue, on legacy files made by hand: lengths, numbers, and what cannot be saved.
#include "toolkit/rescue/rescue.h"

#include <gtest/gtest.h>

#include "tests/support/legacy_samples.h"
#include "tests/toolkit/rescue/rescue_samples.h"
#include "toolkit/conversion/companion.h"
#include "toolkit/conversion/conversion.h"
#include "toolkit/error.h"

namespace {

using namespace std::string_literals;
using zuna_test::RescuedOf;
using zuna_toolkit::ByteRange;
using zuna_toolkit::ErrorCode;
using zuna_toolkit::LegacyLog;
using zuna_toolkit::LegacyShow;
using zuna_toolkit::Rescued;
using zuna_toolkit::RescuedSong;
using zuna_toolkit::RescueReport;
using zuna_toolkit::SongState;

using Texts = std::vector<std::string>;

/// A song of 82 bytes.
std::string Song(const std::string& number) {
  return "\x1E\0\0\0"s  // 0: length of the record: 30 bytes follow, up to the timeline
         "\1" +
         number +                          // 4: number, a single character
         "\4Tune"                          // 6: name
         "\xE0\1"                          // 11: division
         "\0\0\0\0"                        // 13: length
         "\0"                              // 17: no tracks
         "\1\0\0\0"                        // 18: one event
         "\0\0\0\0\0\0\0\0\x90\x3C\x64\1"  // 22: the event
         "TLMN"                            // 34: magic of the timeline
         "\1N"                             // 38: name
         "\0\0\0\0"                        // 40: length
         "\x22\0\0\0"                      // 44: length of the lists: 34 bytes
         "F\0\0\0\0"                       // 48: no tempos
         "G\0\0\0\0"                       // 53: no bar labels
         "H\0\0\0\0"                       // 58: no keys
         "I\0\0\0\0"                       // 63: no page numbers
         "J\x9\0\0\0"                      // 68: meters, 9 bytes
         "J\6\0\0\0\0\0\4\4"s;             // 73: a meter of 4/4 at 0
}
constexpr std::size_t kSongSize = 82;

/// The songs "7", "8" and "9", from the bytes 1, 83 and 165.
std::string Show() { return "\3" + Song("7") + Song("8") + Song("9"); }

/// A show whose song "8" has another byte at `offset`.
std::string ShowWith(std::size_t offset, char byte) {
  std::string show = Show();
  show.at(1 + kSongSize + offset) = byte;
  return show;
}

/// The song at `index` of what comes back.
RescuedSong SongAt(const RescueReport& report, std::size_t index) { return report.songs.at(index); }

Texts NumbersOf(const Rescued& rescued) {
  Texts numbers;
  for (const auto& [number, song] : rescued.document.As<LegacyShow>()->show.songs) numbers.push_back(number);
  return numbers;
}

/// The events that no track has are given one, which is not what these tests are about.
const Texts kUnlisted = {"1 event is of 1 voice that it does not list, added without a name"};

TEST(Rescue, FindsTheNextSongByTheTimelineWhereALengthIsDamaged) {
  ASSERT_EQ(Song("7").size(), kSongSize);
  const Rescued rescued = RescuedOf(ShowWith(0, '\x7F'));  // the length of the record
  EXPECT_EQ(NumbersOf(rescued), (Texts{"7", "8", "9"}));
  EXPECT_EQ(SongAt(rescued.report, 1).remarks, kUnlisted);
  EXPECT_EQ(SongAt(rescued.report, 1).offset, 83U);
  EXPECT_EQ(rescued.report.unread, std::vector<ByteRange>());
}

TEST(Rescue, CountsTheEventsWhereTheirCountIsDamaged) {
  const Rescued rescued = RescuedOf(ShowWith(18, '\7'));
  EXPECT_EQ(SongAt(rescued.report, 1).state, SongState::kPartly);
  EXPECT_EQ(SongAt(rescued.report, 1).remarks,
            (Texts{"has 1 of the 7 events that it states",
                   "it gets 120 quarter notes a minute in place of its tempos", kUnlisted[0]}));
  EXPECT_EQ(NumbersOf(rescued), (Texts{"7", "8", "9"}));
}

TEST(Rescue, CountsAgainWhereTheLengthOfTheListsIsDamaged) {
  const Rescued rescued = RescuedOf(ShowWith(45, '\x7F'));
  EXPECT_EQ(SongAt(rescued.report, 1).remarks, kUnlisted);
}

TEST(Rescue, TakesTheOtherListsWhereOneIsDamaged) {
  const Rescued rescued = RescuedOf(ShowWith(58, 'x'));  // the code of the keys
  const RescuedSong song = SongAt(rescued.report, 1);
  EXPECT_EQ(song.state, SongState::kPartly);
  EXPECT_EQ(song.remarks,
            (Texts{"its keys, if it had any, are missing", "its page numbers, if it had any, are missing",
                   "it gets 120 quarter notes a minute in place of its tempos", kUnlisted[0]}));
  EXPECT_EQ(rescued.report.unread, (std::vector<ByteRange>{{83 + 58, 83 + 68}}));
}

TEST(Rescue, CountsTheVoicesThatASongDoesNotList) {
  version0::ShowData show = zuna_test::SampleLegacyShow();
  version0::SongData& song = show.songs.begin()->second;
  song.tracks.clear();
  song.events.clear();
  for (unsigned id = 0; id < 255; ++id) {
    song.events[static_cast<std::uint8_t>(id)].assign(
        2, version0::EventObject(0, 0, 0x90, 60, 100, static_cast<std::uint8_t>(id)));
  }
  const Rescued rescued = RescuedOf(zuna_test::Written(show));
  EXPECT_EQ(SongAt(rescued.report, 0).remarks,
            Texts{"510 events are of 255 voices that it does not list, added without a name"});
}

TEST(Rescue, TakesTheEventsBeforeACut) {
  const Rescued rescued = RescuedOf(Show().substr(0, 1 + kSongSize + 34));
  EXPECT_EQ(NumbersOf(rescued), (Texts{"7", "8"}));
  EXPECT_EQ(SongAt(rescued.report, 1).state, SongState::kPartly);
  EXPECT_EQ(rescued.report.stated_songs, 3U);
  EXPECT_EQ(rescued.report.saved(), 2U);
  EXPECT_FALSE(rescued.report.complete());
}

TEST(Rescue, LosesASongThatIsCutBeforeItsEvents) {
  const Rescued rescued = RescuedOf(Show().substr(0, 1 + kSongSize + 20));
  const RescuedSong song = SongAt(rescued.report, 1);
  EXPECT_EQ(song.state, SongState::kLost);
  EXPECT_EQ(song.number, "8");
  EXPECT_EQ(song.name, "Tune");
  EXPECT_EQ(song.remarks, Texts{"its beginning cannot be read"});
  EXPECT_EQ(rescued.report.unread, (std::vector<ByteRange>{{83, 103}}));
}

TEST(Rescue, LosesASongThatHasNoEventLeft) {
  const Rescued rescued = RescuedOf(Show().substr(0, 1 + kSongSize + 25));
  EXPECT_EQ(SongAt(rescued.report, 1).remarks,
            Texts{"it has no events, without which no legacy song can be written"});
}

TEST(Rescue, TellsBytesAfterTheLastSong) {
  const Rescued rescued = RescuedOf(Show() + "xyz");
  EXPECT_EQ(rescued.report.remarks, (Texts{"is not encrypted", "3 bytes follow the last song"}));
  EXPECT_EQ(rescued.report.unread, (std::vector<ByteRange>{{247, 250}}));
}

TEST(Rescue, TellsThatTheCountOfSongsIsTooSmall) {
  std::string show = Show();
  show[0] = '\1';
  const Rescued rescued = RescuedOf(show);
  EXPECT_EQ(rescued.report.remarks, (Texts{"is not encrypted", "states 1 song, and 3 were found"}));
  EXPECT_EQ(rescued.report.saved(), 3U);
  EXPECT_FALSE(rescued.report.complete());
}

TEST(Rescue, KeepsSongsOfOneNumber) {
  const Rescued rescued = RescuedOf("\3" + Song("7") + Song("9") + Song("9"));
  EXPECT_EQ(NumbersOf(rescued), (Texts{"7", "9", "9 (2)"}));
  EXPECT_EQ(SongAt(rescued.report, 2).remarks, (Texts{kUnlisted[0], "another song has its number, 9"}));
}

TEST(Rescue, LeavesTheNumberToTheSongThatStandsInOrder) {
  const Rescued rescued = RescuedOf("\3" + Song("9") + Song("8") + Song("9"));
  EXPECT_EQ(SongAt(rescued.report, 0).number, "9 (2)");
  EXPECT_EQ(SongAt(rescued.report, 2).number, "9");
}

TEST(Rescue, KeepsNoMoreSongsThanAShowHolds) {
  std::string show = "\xFF";
  for (int i = 0; i < 256; ++i) show += Song(std::string(1, static_cast<char>(i)));
  const Rescued rescued = RescuedOf(show);
  EXPECT_EQ(rescued.report.saved(), 255U);
  EXPECT_EQ(rescued.report.songs.back().remarks, Texts{"a legacy show holds 255 songs"});
}

TEST(Rescue, MakesAShowThatCanBeConvertedUp) {
  const std::string show = zuna_test::Written(zuna_test::SampleLegacyShow());
  const Rescued rescued = RescuedOf(show.substr(0, show.rfind("TLMN")));
  EXPECT_EQ(SongAt(rescued.report, 1).state, SongState::kPartly);
  EXPECT_NO_THROW(zuna_toolkit::Up(rescued.document, zuna_toolkit::Companion{}, {1, 2}));
}

std::string SampleLog() { return zuna_test::Written(zuna_test::SampleLegacyLog()); }

TEST(Rescue, TakesTheEditsBeforeACut) {
  const std::string log = SampleLog();
  const std::size_t markers = log.find("\x45\x06");  // code and low byte of the length
  const Rescued rescued = RescuedOf(log.substr(0, markers));
  const RescuedSong song = SongAt(rescued.report, 0);
  EXPECT_EQ(song.number, "12a");
  EXPECT_EQ(song.remarks, Texts{"its markers, if it had any, are missing"});
  EXPECT_EQ(rescued.document.As<LegacyLog>()->log.songs.at("12a").cuts.size(), 1U);
  EXPECT_EQ(rescued.document.As<LegacyLog>()->log.show_name, "Opera");
}

TEST(Rescue, TakesTheFirstEditsWhereOthersOfEveryKindAreMissing) {
  const std::string log = SampleLog();
  const std::size_t cuts = log.find("\x42\x0C");
  const std::size_t after_first = cuts + 5 + 12;  // behind the head of the cuts and one of them
  std::string damaged = log.substr(0, after_first) + "x";
  damaged[cuts + 1] = '\x7F';  // the length of all of them
  const Rescued rescued = RescuedOf(damaged);
  const RescuedSong song = SongAt(rescued.report, 0);
  EXPECT_EQ(song.state, SongState::kPartly);
  ASSERT_EQ(song.remarks.size(), 8U);
  EXPECT_EQ(song.remarks[0], "some of its cuts are missing");
  EXPECT_EQ(rescued.document.As<LegacyLog>()->log.songs.at("12a").cuts.size(), 1U);
}

TEST(Rescue, LosesASongLogOfWhichNothingIsLeft) {
  const std::string log = SampleLog();
  const std::size_t cuts = log.find("\x42\x0C");
  try {
    RescuedOf(log.substr(0, cuts));
    FAIL();
  } catch (const zuna_toolkit::Error& error) {
    EXPECT_STREQ(error.what(),
                 "file: holds no song that can be read; "
                 "give its key if it is encrypted with another one, or get another copy of the file");
    EXPECT_EQ(error.code(), ErrorCode::kNothingToSave);
  }
}

}  // namespace
