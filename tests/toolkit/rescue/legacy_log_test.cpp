// What comes back of damaged legacy logs: every song log that the damage does not touch, from its beginning
// on.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/random_legacy_log.h"
#include "tests/support/rescue_accounts.h"
#include "tests/support/sanitized.h"
#include "tests/toolkit/rescue/rescue_samples.h"
#include "toolkit/error.h"

namespace {

using namespace std::string_literals;
using zuna_test::Part;
using zuna_test::RescuedOf;
using zuna_test::Sample;
using zuna_toolkit::LegacyLog;
using zuna_toolkit::Rescued;
using zuna_toolkit::RescuedSong;
using zuna_toolkit::SongState;

constexpr std::size_t kSongs = 20;

/// A log of 20 songs with a few edits each.
Sample MakeSample(std::mt19937& random) {
  version0::ChangeLogV0 log;
  log.identifier = kit::UUID(kit::UUID::Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
  log.show_name = "Opera";
  log.log_label = "First night";
  log.log_tag_pair = {1, 2};
  while (log.songs.size() < kSongs) {
    for (auto& [number, song] : zuna_test::RandomLegacyLog(random).songs) {
      const std::string own = std::to_string(log.songs.size() + 100);
      if (log.songs.size() == kSongs) break;
      song.songNumber_ = own;
      song.songName_ = "Tune";
      log.songs[own] = song;
    }
  }
  Sample sample;
  sample.bytes = zuna_test::Written(log);
  std::size_t end = sample.bytes.size();
  for (auto entry = log.songs.rbegin(); entry != log.songs.rend(); ++entry) {
    const std::string bytes = zuna_test::Written(entry->second);
    sample.parts.insert(sample.parts.begin(), {entry->first, end - bytes.size(), end, bytes});
    end -= bytes.size();
  }
  return sample;
}

std::vector<std::string> SongsOf(const std::string& plaintext) {
  std::vector<std::string> songs;
  try {
    const Rescued rescued = zuna_test::RescuedOf(plaintext);
    const auto* log = rescued.document.As<LegacyLog>();
    if (log == nullptr) return songs;
    for (const auto& [number, song] : log->log.songs) songs.push_back(zuna_test::Written(song));
  } catch (const zuna_toolkit::Error& error) {
    EXPECT_EQ(error.code(), zuna_toolkit::ErrorCode::kNothingToSave) << error.what();
  }
  return songs;
}

TEST(RescueOfLegacyLogs, SavesTheSongsBeforeEveryCut) {
  std::mt19937 random(1);
  const Sample sample = MakeSample(random);
  for (std::size_t cut = sample.parts.front().end; cut <= sample.bytes.size();
       cut = zuna_test::NextCut(cut)) {
    const std::vector<std::string> songs = SongsOf(sample.bytes.substr(0, cut));
    for (const Part& part : sample.parts) {
      if (part.end > cut) break;
      ASSERT_NE(std::find(songs.begin(), songs.end(), part.bytes), songs.end())
          << "song " << part.number << ", cut at " << cut;
    }
  }
}

TEST(RescueOfLegacyLogs, TellsThatTheEndIsMissingAfterACutBetweenSongs) {
  std::mt19937 random(5);
  const Sample sample = MakeSample(random);
  EXPECT_TRUE(zuna_test::RescuedOf(sample.bytes).report.complete());
  for (std::size_t i = 0; i + 1 < kSongs; ++i) {
    const std::size_t cut = sample.parts[i].end;
    const Rescued rescued = zuna_test::RescuedOf(sample.bytes.substr(0, cut));
    EXPECT_EQ(rescued.report.saved(), i + 1);
    EXPECT_FALSE(rescued.report.complete());
    EXPECT_EQ(rescued.report.missing,
              std::vector<std::string>{"the end of the log (" + std::to_string(sample.bytes.size() - cut) +
                                       " bytes)"});
  }
}

TEST(RescueOfLegacyLogs, TellsThatItsLengthIsTooSmall) {
  std::mt19937 random(6);
  Sample sample = MakeSample(random);
  sample.bytes.replace(4, 4, std::string("\x20\0\0\0", 4));
  const Rescued rescued = zuna_test::RescuedOf(sample.bytes);
  EXPECT_EQ(rescued.report.saved(), kSongs);
  EXPECT_TRUE(rescued.report.complete()) << "a length can be counted again";
  EXPECT_EQ(rescued.report.remarks.back(),
            "has " + std::to_string(sample.bytes.size()) + " bytes, and its header states 40");
}

TEST(RescueOfLegacyLogs, SavesEverySongThatDamageDoesNotTouch) {
  std::mt19937 random(2);
  zuna_test::ExpectUntouchedSongs(random, 100, MakeSample, SongsOf);
}

TEST(RescueOfLegacyLogs, SavesEverySongAroundBytesThatAreMissingAtTheEndOfOne) {
  std::mt19937 random(15);
  for (int round = 0; round < zuna_test::Rounds(400); ++round) {
    const Sample sample = MakeSample(random);
    const std::size_t count = 1 + random() % 8;
    const std::size_t touched = random() % kSongs;
    const std::size_t begin = sample.parts[touched].end - count - random() % 4;
    const std::vector<std::string> saved = SongsOf(std::string(sample.bytes).erase(begin, count));
    for (const Part& part : sample.parts) {
      ASSERT_TRUE(part.number == sample.parts[touched].number || CameBack(part, saved))
          << "song " << part.number << " of round " << round;
    }
  }
}

TEST(RescueOfLegacyLogs, KeepsTheHeaderOfALogWithADamagedSong) {
  std::mt19937 random(3);
  Sample sample = MakeSample(random);
  sample.bytes[sample.parts[3].begin + 3] = '\x7F';  // the length of its record
  const Rescued rescued = zuna_test::RescuedOf(sample.bytes);
  const version0::ChangeLogV0& log = rescued.document.As<LegacyLog>()->log;
  EXPECT_EQ(log.show_name, "Opera");
  EXPECT_EQ(log.log_label, "First night");
  EXPECT_EQ(log.songs.size(), kSongs);
  EXPECT_TRUE(rescued.report.changed);
}

TEST(RescueOfLegacyLogs, TellsThatTheHeaderIsMissing) {
  std::mt19937 random(4);
  Sample sample = MakeSample(random);
  sample.bytes[24] = '\xFF';  // the length of the label
  const Rescued rescued = zuna_test::RescuedOf(sample.bytes);
  EXPECT_EQ(rescued.document.As<LegacyLog>()->log.show_name, "");
  EXPECT_EQ(rescued.report.saved(), kSongs);
  EXPECT_EQ(rescued.report.missing,
            (std::vector<std::string>{"the show's name", "the log's label", "the log's tag pair"}));
  EXPECT_FALSE(rescued.report.complete());
}

using Texts = std::vector<std::string>;

/// What is missing of a log in which so many bytes from `begin` on are zero.
Texts MissingWithZeros(std::size_t begin, std::size_t count) {
  std::mt19937 random(11);
  Sample sample = MakeSample(random);
  sample.bytes.replace(begin, count, std::string(count, '\0'));
  const Rescued rescued = zuna_test::RescuedOf(sample.bytes);
  EXPECT_EQ(zuna_test::WrongAccount(rescued.report, sample.bytes.size()), "");
  EXPECT_EQ(rescued.report.saved(), kSongs);
  EXPECT_EQ(rescued.report.complete(), rescued.report.missing.empty() && !rescued.report.changed);
  return rescued.report.missing;
}

// The head: magic, length (from 4), identifier (8), label (24), show name (36), tag pair (42), songs (46).
TEST(RescueOfLegacyLogs, TellsZerosOverItsHead) {
  const Texts texts = {"the show's name", "the log's label", "the log's tag pair"};
  Texts all = texts;
  all.emplace_back("the log's identifier");
  EXPECT_EQ(MissingWithZeros(0, 4), Texts()) << "a magic is known";
  EXPECT_EQ(MissingWithZeros(0, 8), Texts()) << "a length can be counted again";
  for (std::size_t count = 9; count < 24; ++count) EXPECT_EQ(MissingWithZeros(0, count), Texts()) << count;
  EXPECT_EQ(MissingWithZeros(0, 24), Texts{"the log's identifier"});
  for (std::size_t count = 25; count <= 46; ++count) EXPECT_EQ(MissingWithZeros(0, count), all) << count;
  EXPECT_EQ(MissingWithZeros(12, 4), Texts());
  EXPECT_EQ(MissingWithZeros(23, 2), texts);
  EXPECT_EQ(MissingWithZeros(24, 1), texts);
  EXPECT_EQ(MissingWithZeros(24, 12), texts);
  EXPECT_EQ(MissingWithZeros(25, 11), Texts{"the log's label"});
  EXPECT_EQ(MissingWithZeros(30, 3), Texts{"a part of the log's label"});
  EXPECT_EQ(MissingWithZeros(37, 5), Texts{"the show's name"});
  EXPECT_EQ(MissingWithZeros(37, 9), (Texts{"the show's name", "the log's tag pair"}));
  EXPECT_EQ(MissingWithZeros(36, 2), (Texts{"the show's name", "the log's tag pair"}));
}

TEST(RescueOfLegacyLogs, SavesALogWithoutAnIdentifierWhole) {
  version0::ChangeLogV0 log;
  log.identifier = kit::UUID(kit::UUID::Bytes{});
  log.show_name = "Opera";
  EXPECT_TRUE(zuna_test::RescuedOf(zuna_test::Written(log)).report.complete());
  std::mt19937 random(13);
  log.songs = zuna_test::RandomLegacyLog(random).songs;
  EXPECT_TRUE(zuna_test::RescuedOf(zuna_test::Written(log)).report.complete());
}

TEST(RescueOfLegacyLogs, TellsThatItsIdentifierMayBeDamaged) {
  std::mt19937 random(12);
  Sample sample = MakeSample(random);
  sample.bytes.replace(0, 10, "0123456789");
  const Rescued rescued = zuna_test::RescuedOf(sample.bytes);
  EXPECT_EQ(rescued.report.saved(), kSongs);
  EXPECT_FALSE(rescued.report.complete());
  EXPECT_EQ(rescued.report.remarks.at(1), "its magic and its length are wrong, and its identifier may be");
}

TEST(RescueOfLegacyLogs, KeepsWhatIsLeftOfItsIdentifier) {
  kit::UUID::Bytes identifier{0, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
  std::mt19937 random(14);
  Sample sample = MakeSample(random);
  sample.bytes[8] = '\0';
  sample.bytes.replace(0, 8, 8, '\0');
  const std::string size = std::to_string(sample.bytes.size());
  for (const std::size_t zeros : {0U, 5U}) {
    sample.bytes.replace(12, zeros, zeros, '\0');
    std::fill_n(identifier.begin() + 4, zeros, std::uint8_t{0});
    const Rescued rescued = zuna_test::RescuedOf(sample.bytes);
    EXPECT_EQ(rescued.document.As<LegacyLog>()->log.identifier, kit::UUID(identifier));
    EXPECT_EQ(rescued.report.missing, Texts());
    EXPECT_FALSE(rescued.report.complete());
    EXPECT_EQ(rescued.report.remarks,
              (Texts{"is not encrypted", "zeros are in its identifier or before it: it may be damaged",
                     "has " + size + " bytes, and its header states 0"}));
  }
}

TEST(RescueOfLegacyLogs, KnowsThatBytesInsideAreMissing) {
  std::mt19937 random(7);
  Sample sample = MakeSample(random);
  const std::size_t size = sample.bytes.size();
  sample.bytes.erase(sample.parts[3].end - 9, 3);
  const Rescued rescued = zuna_test::RescuedOf(sample.bytes);
  EXPECT_EQ(rescued.report.missing, std::vector<std::string>());
  EXPECT_EQ(rescued.report.remarks.back(),
            "has " + std::to_string(size - 3) + " bytes, and its header states " + std::to_string(size));
  EXPECT_EQ(rescued.report.known_songs, std::nullopt);
}

TEST(RescueOfLegacyLogs, TellsThatItsFirstBytesAreDamaged) {
  std::mt19937 random(8);
  Sample sample = MakeSample(random);
  sample.bytes[0] = 'x';
  const Rescued rescued = zuna_test::RescuedOf(sample.bytes);
  EXPECT_EQ(rescued.report.saved(), kSongs);
  EXPECT_EQ(rescued.report.remarks.back(), "its first bytes, lengths or counts are wrong, and are made anew");
  EXPECT_TRUE(rescued.report.changed);
  EXPECT_FALSE(rescued.report.songs.front().vouched);
}

TEST(RescueOfLegacyLogs, KeepsTheSongsOfJoinedFilesApart) {
  std::mt19937 random(9);
  const Sample sample = MakeSample(random);
  const Rescued rescued = zuna_test::RescuedOf(sample.bytes + sample.bytes);
  ASSERT_EQ(rescued.report.songs.size(), 2 * kSongs);
  EXPECT_EQ(rescued.report.songs[kSongs - 1].number, "119");
  EXPECT_EQ(rescued.report.songs[kSongs].number, "100 (2)");
  EXPECT_EQ(rescued.report.songs.back().number, "119 (2)");
}

/// A song log whose only list is that of its cuts, with one cut.
std::string ShortSongLog(const std::string& number) {
  return "\x0D\0\0\0"s  // the sequence has four bytes more: 17
         "\1" +
         number +                      // number
         "\4Tune"                      // name
         "\0\0\0\0"                    // length
         "B\x0C\0\0\0"                 // cuts, 12 bytes
         "B\x9\0\0\0\0\0\1\0\0\0\1"s;  // a cut from 0 to 1
}

/// A log of these songs.
std::string LogOf(const std::string& songs) {
  return "ZUNA" + std::string(1, static_cast<char>(22 + songs.size())) + "\0\0\0"s + "0123456789abcdef" +
         "\0\0\1\0\2\0"s + songs;
}

TEST(RescueOfALegacyLog, IsWholeWhereTheWriterOfALogLeavesListsOut) {
  const Rescued rescued = RescuedOf(LogOf(ShortSongLog("1") + ShortSongLog("2") + ShortSongLog("3")));
  ASSERT_EQ(rescued.report.songs.size(), 3U);
  for (const RescuedSong& song : rescued.report.songs) EXPECT_EQ(song.remarks, Texts()) << song.number;
  EXPECT_TRUE(rescued.report.complete());
}

TEST(RescueOfALegacyLog, IsLostWhereALogHasNoneOfItsEdits) {
  std::string second = ShortSongLog("2");
  second.replace(second.size() - 17, 17, std::string(17, '\0'));
  const Rescued rescued = RescuedOf(LogOf(ShortSongLog("1") + second + ShortSongLog("3")));
  ASSERT_EQ(rescued.report.songs.size(), 3U);
  EXPECT_EQ(rescued.report.songs[1].number, "2");
  EXPECT_EQ(rescued.report.songs[1].state, SongState::kLost);
  EXPECT_EQ(rescued.report.songs[1].remarks, Texts{"none of its edits can be read"});
}

}  // namespace
