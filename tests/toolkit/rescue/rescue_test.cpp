// The report of a rescue, on files made by hand: lengths, encryption, numbers, and what cannot be saved.
#include "toolkit/rescue/rescue.h"

#include <gtest/gtest.h>

#include "tests/support/legacy_samples.h"
#include "tests/support/sample_models.h"
#include "tests/toolkit/rescue/rescue_samples.h"
#include "toolkit/conversion/companion.h"
#include "toolkit/conversion/conversion.h"
#include "toolkit/error.h"

namespace {

using namespace std::string_literals;
using zuna_test::ByteVector;
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
  EXPECT_EQ(song.remarks, (Texts{"its keys are missing", "its page numbers are missing",
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
  EXPECT_EQ(song.remarks, Texts{"its markers are missing"});
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

// The encryption.

ByteVector Sealed() { return zuna_test::Encrypted(zuna_test::Written(zuna_test::SampleLegacyShow())); }

Rescued RescuedOfSealed(const ByteVector& bytes, const CipherKey& key = zuna_test::kKey) {
  return zuna_toolkit::Rescue(bytes, "file", key);
}

TEST(Rescue, SaysThatNothingIsMissing) {
  const Rescued rescued = RescuedOfSealed(Sealed());
  EXPECT_TRUE(rescued.report.complete());
  EXPECT_EQ(rescued.report.remarks, Texts());
  EXPECT_TRUE(SongAt(rescued.report, 0).vouched);
}

TEST(Rescue, VouchesForSongsBehindADamagedHeader) {
  ByteVector bytes = Sealed();
  bytes[0] ^= 1;
  bytes.push_back('\0');
  const Rescued rescued = RescuedOfSealed(bytes);
  EXPECT_TRUE(rescued.report.complete());
  EXPECT_TRUE(SongAt(rescued.report, 0).vouched);
  EXPECT_EQ(rescued.report.remarks,
            (Texts{"the header of its encryption is damaged (magic)", "1 byte follows its encrypted bytes"}));
}

TEST(Rescue, VouchesForNoSongOfAChangedFile) {
  ByteVector bytes = Sealed();
  bytes.back() ^= 1;
  const Rescued rescued = RescuedOfSealed(bytes);
  EXPECT_EQ(rescued.report.remarks, Texts{"was changed after it was encrypted"});
  EXPECT_EQ(rescued.report.saved(), 2U);
  EXPECT_TRUE(rescued.report.changed);
  EXPECT_FALSE(rescued.report.complete());
  EXPECT_FALSE(SongAt(rescued.report, 0).vouched);
}

TEST(Rescue, TellsHowMuchIsCutOff) {
  ByteVector bytes = Sealed();
  const std::size_t size = bytes.size() - 72;
  bytes.pop_back();
  const Rescued rescued = RescuedOfSealed(bytes);
  EXPECT_EQ(rescued.report.remarks, Texts{"has " + std::to_string(size - 1) +
                                          " encrypted bytes, and its header states " + std::to_string(size)});
  EXPECT_EQ(SongAt(rescued.report, 0).state, SongState::kWhole);
  EXPECT_EQ(SongAt(rescued.report, 1).state, SongState::kPartly);
}

template <typename... Arguments>
std::string Refusal(ErrorCode code, const Arguments&... arguments) {
  try {
    zuna_toolkit::Rescue(arguments...);
  } catch (const zuna_toolkit::Error& error) {
    EXPECT_EQ(error.code(), code);
    return error.what();
  }
  return "(nothing was thrown)";
}

TEST(Rescue, RefusesWhatItCannotOpen) {
  ByteVector bytes = Sealed();
  bytes.back() ^= 1;
  EXPECT_EQ(
      Refusal(ErrorCode::kWrongKey, bytes, "file"s, CipherKey{{1}, {}}),
      "file: the key or the IV is not the one that this was encrypted with, or its key check is damaged; "
      "give the right key file");
  EXPECT_EQ(Refusal(ErrorCode::kNoKey, bytes, "file"s, CipherKey{}),
            "file: is encrypted with a key, and none was given; give its key");
  bytes.resize(71);
  EXPECT_EQ(Refusal(ErrorCode::kCutOff, bytes, "file"s, zuna_test::kKey),
            "file: ends inside the header (offset 71 of 72); get a complete copy of the file");
  EXPECT_EQ(Refusal(ErrorCode::kEmptyFile, ByteVector(), "file"s, zuna_test::kKey),
            "file: is empty, not an encrypted file; give another file");
  EXPECT_EQ(Refusal(ErrorCode::kNotEncrypted, ByteVector(100, 'x'), "file"s, zuna_test::kKey),
            "file: is not an encrypted file of this kind (offset 0); give an encrypted show or log file");
}

TEST(Rescue, TellsWhatFollowsItsEncryptedBytes) {
  const ByteVector bytes = Sealed();
  const std::string plain = zuna_test::Written(zuna_test::SampleLegacyLog());
  const auto missing = [&](const std::string& tail) {
    ByteVector joined = bytes;
    joined.insert(joined.end(), tail.begin(), tail.end());
    const Rescued rescued = RescuedOfSealed(joined);
    EXPECT_EQ(rescued.report.saved(), 2U);
    EXPECT_EQ(rescued.report.complete(), rescued.report.missing.empty());
    return rescued.report.missing;
  };
  const auto begins_at = [&](std::size_t place) {
    return Texts{"the document that begins at byte " + std::to_string(bytes.size() + place) + " of the file"};
  };
  EXPECT_EQ(missing("\r\n \0\0"s), Texts());
  EXPECT_EQ(missing("xyz"), Texts{"what follows its encrypted bytes"});
  EXPECT_EQ(missing(plain), begins_at(0));
  EXPECT_EQ(missing("\0\n"s + plain), begins_at(2));
  EXPECT_EQ(missing("xyz" + plain), begins_at(3));
  EXPECT_EQ(missing(Show()), begins_at(0));
  EXPECT_EQ(missing(zuna_test::WrittenAt(zuna_test::SampleShow(), {2, 0})), begins_at(0));
}

TEST(Rescue, TellsWhereAnotherEncryptedFileBegins) {
  const ByteVector next = Sealed();
  ByteVector cut = next;
  cut.pop_back();
  ByteVector headless = next;
  headless[0] ^= 1;
  headless[16] ^= 1;  // its length
  const ByteVector plain = zuna_test::FromText(zuna_test::Written(zuna_test::SampleLegacyLog()));
  for (ByteVector bytes : {next, cut, headless, plain}) {
    const std::size_t place = bytes.size();
    bytes.insert(bytes.end(), next.begin(), next.end());
    const auto accept = zuna_toolkit::Accept::kEncryptedOrPlain;
    const Rescued rescued = zuna_toolkit::Rescue(bytes, "file", zuna_test::kKey, accept);
    EXPECT_EQ(rescued.report.saved(), 2U);
    EXPECT_FALSE(rescued.report.complete());
    EXPECT_EQ(rescued.report.missing.back(),
              "the encrypted file that begins at byte " + std::to_string(place) + " of this one");
  }
}

TEST(Rescue, TellsWhereAnEncryptedFileBeginsBehindOtherBytes) {
  const auto accept = zuna_toolkit::Accept::kEncryptedOrPlain;
  for (const std::string& front : {"\r\n"s, std::string(128, 'x'), "\x89ZSC\r\n\x1a\n\1\1"s}) {
    ByteVector bytes = zuna_test::FromText(front);
    const ByteVector next = Sealed();
    bytes.insert(bytes.end(), next.begin(), next.end());
    EXPECT_EQ(Refusal(ErrorCode::kNothingToSave, bytes, "file"s, zuna_test::kKey, accept),
              "file: holds no song that can be read before byte " + std::to_string(front.size()) +
                  ", where an encrypted file begins; take that file with tail -c +" +
                  std::to_string(front.size() + 1));
  }
}

TEST(Rescue, SavesNothingBehindADamagedTag) {
  ByteVector bytes = Sealed();
  bytes[56] ^= 1;
  EXPECT_EQ(Refusal(ErrorCode::kNothingToSave, bytes, "file"s, zuna_test::kKey),
            "file: holds no song that can be read; get another copy of the file");
}

// The text form.

std::string Text() { return zuna_test::WrittenAt(zuna_test::SampleShow(), {2, 0}); }

TEST(Rescue, TakesSongsOfATextInAnyOrderOfKeys) {
  std::string text = R"({"kind": "showdata", "fileVersion": "2.0", "songs": [)";
  const std::string song =
      R"({"songName": "Go", "songNumber": "1", "division": 480, "songLength": 1, "timeline": {"tempos": [], )"
      R"("barsBeats": [], "keys": [], "pageNumbers": [], "meters": []}, "voices": []})";
  text += song + ", {\"songNumber\": \"2\"}], \"showName\": \"}]\\\"\"}";
  const Rescued rescued = RescuedOf(text);
  EXPECT_EQ(rescued.document.As<zuna_midi::ShowData>()->show_name, "}]\"");
  ASSERT_EQ(rescued.report.songs.size(), 2U);
  EXPECT_EQ(SongAt(rescued.report, 0).name, "Go");
  EXPECT_EQ(SongAt(rescued.report, 1).state, SongState::kLost);
  EXPECT_EQ(SongAt(rescued.report, 1).number, "2");
  EXPECT_EQ(SongAt(rescued.report, 1).remarks, Texts{"its text is not complete and correct"});
}

TEST(Rescue, SkipsAByteOrderMarkBeforeAText) {
  for (const std::string& front : {"\xEF\xBB\xBF"s, "\xEF\xBB\xBF\r\n"s}) {
    const Rescued rescued = RescuedOf(front + Text());
    EXPECT_TRUE(rescued.report.complete());
    EXPECT_EQ(rescued.report.remarks,
              (Texts{"is not encrypted", "a byte order mark stands before its text"}));
    EXPECT_EQ(rescued.document.As<zuna_midi::ShowData>()->show_name, "Hä");
    const std::string damaged = front + Text().substr(0, Text().find_last_of(']'));
    EXPECT_EQ(RescuedOf(damaged).report.missing, Texts{"the end of the text"});
    EXPECT_EQ(SongAt(RescuedOf(damaged).report, 0).offset, damaged.find("{", front.size() + 1));
  }
}

TEST(Rescue, TellsThatTheEndOfATextIsMissing) {
  const std::string text = Text();
  const Rescued rescued = RescuedOf(text.substr(0, text.find_last_of(']')));
  EXPECT_EQ(rescued.report.missing, Texts{"the end of the text"});
  EXPECT_EQ(rescued.report.saved(), 1U);
  EXPECT_EQ(rescued.document.As<zuna_midi::ShowData>()->show_name, "Hä");
}

TEST(Rescue, TellsThatTheHeadOfATextIsMissing) {
  std::string text = Text();
  text[1] = 'x';
  const Rescued rescued = RescuedOf(text);
  EXPECT_EQ(rescued.report.missing, Texts{"the show's name"});
  EXPECT_EQ(rescued.report.saved(), 1U);
}

}  // namespace
