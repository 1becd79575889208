#include "format_converter/version0/containers/change_log.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "CL/change_log.h"
#include "format_converter/version0/primitives/errors.h"
#include "tests/format_converter/support/positions.h"
#include "tests/support/bytes.h"
#include "tests/support/failing_streambuf.h"
#include "tests/support/random_legacy_log.h"

namespace {

using version0::ChangeLogV0;
using version0::SongLogV0;
using zuna_test::Bytes;
using zuna_test::MessageOf;
using zuna_test::Read;
using zuna_test::Written;

SongLogV0 SongLog(const std::string& number) {
  SongLogV0 log;
  log.songNumber_ = number;
  log.cuts = {{0, 480, 1}};
  return log;
}

ChangeLogV0 LogOf(std::initializer_list<const char*> numbers) {
  ChangeLogV0 log;
  log.identifier = kit::UUID(kit::UUID::Bytes{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15});
  log.log_label = "First";
  log.show_name = "Opera";
  log.log_tag_pair = {1, 2};
  for (const char* number : numbers) log.songs.emplace(number, SongLog(number));
  return log;
}

/// The bytes of a log with this front of the header and these song logs.
std::string LogWith(std::uint32_t stated, const std::string& song_logs) {
  std::string bytes = Written(LogOf({}));
  for (unsigned i = 0; i < 4; ++i) bytes[4 + i] = static_cast<char>(stated >> (8 * i));
  return bytes + song_logs;
}
std::string LogWith(const std::string& song_logs) {
  return LogWith(static_cast<std::uint32_t>(32 + song_logs.size()), song_logs);
}

TEST(ChangeLogV0, Bytes) {
  const std::string song = Written(SongLog("7"));
  ASSERT_EQ(song.size(), 63U);
  const std::string bytes =
      Bytes({
          'Z', 'U', 'N', 'A',                                                // magic
          95,  0,   0,   0,                                                  // log length
          0,   1,   2,   3,   4,   5,   6, 7, 8, 9, 10, 11, 12, 13, 14, 15,  // identifier
          5,   'F', 'i', 'r', 's', 't',                                      // log label
          5,   'O', 'p', 'e', 'r', 'a',                                      // show name
          1,   0,   2,   0,                                                  // log tag pair
      }) +
      song;
  EXPECT_EQ(Written(LogOf({"7"})), bytes);
  EXPECT_EQ(bytes.size() - 8, 95U);
  const auto log = Read<ChangeLogV0>(bytes);
  EXPECT_TRUE(log == LogOf({"7"}));
  EXPECT_EQ(Written(log), bytes);
}

TEST(ChangeLogV0, SongsStandInPlainByteOrder) {
  const std::string song_logs =
      Written(SongLog("1")) + Written(SongLog("10")) + Written(SongLog("2")) + Written(SongLog("A"));
  EXPECT_EQ(Written(LogOf({"2", "A", "10", "1"})), LogWith(song_logs));
}

TEST(ChangeLogV0, TheLaterOfTwoSongLogsStays) {
  SongLogV0 later = SongLog("7");
  later.cuts[0].end = 99;
  const auto log = Read<ChangeLogV0>(LogWith(Written(SongLog("7")) + Written(later)));
  ASSERT_EQ(log.songs.size(), 1U);
  EXPECT_EQ(log.songs.at("7").cuts[0].end, 99U);
}

TEST(ChangeLogV0, AlwaysReadsOneSongLog) {
  const auto log = Read<ChangeLogV0>(LogWith(0, Written(SongLog("1")) + Written(SongLog("2"))));
  EXPECT_EQ(log.songs.size(), 1U);
  EXPECT_THROW(Read<ChangeLogV0>(LogWith("")), std::ios_base::failure);
}

TEST(ChangeLogV0, AShortReadInASongLogIsNotQuiet) {
  const std::string song_logs = Written(SongLog("1"));
  EXPECT_THROW(Read<ChangeLogV0>(LogWith(1000, song_logs)), std::ios_base::failure);
  EXPECT_THROW(Read<ChangeLogV0>(LogWith(1000, song_logs + "12345")), std::ios_base::failure);
}

TEST(ChangeLogV0, ALengthThatIsTooSmallEndsTheLogAfterASong) {
  const std::string song_logs = Written(SongLog("1")) + Written(SongLog("2"));
  EXPECT_EQ(Read<ChangeLogV0>(LogWith(32 + 63, song_logs)).songs.size(), 1U);
  EXPECT_EQ(Read<ChangeLogV0>(LogWith(32 + 64, song_logs)).songs.size(), 2U);
}

TEST(ChangeLogV0, EndsQuietlyWhereThePositionCannotBeTaken) {
  const std::string bytes = LogWith(Written(SongLog("1")) + Written(SongLog("2")));
  // Every call that fails: either an error or the song logs before it, never anything else.
  int quiet = 0;
  for (std::size_t call = 1;; ++call) {
    zuna_test::FailingStreambuf buffer(bytes, {.fail_at = call, .once = true});
    std::istream is(&buffer);
    try {
      const ChangeLogV0 log(is);
      if (buffer.calls() < call) break;
      EXPECT_EQ(log.songs.count("1"), 1U);
      quiet += log.songs.size() == 1 ? 1 : 0;
    } catch (const std::exception&) {
    }
  }
  EXPECT_EQ(quiet, 1);
}

TEST(ChangeLogV0, AFailingPositionEndsTheLogQuietlyAfterACompleteSongLogOnly) {
  ChangeLogV0 log;
  for (const char* number : {"1", "2"}) log.songs[number].songNumber_ = number;
  // A position is taken after the header's length, and for a song log before its 8 sequences, after each of
  // them and after the song log.
  for (int good = 0; good < 2 + 2 * 10; ++good) {
    zuna_test::NoPositionAfter buffer(Written(log), good);
    std::istream is(&buffer);
    if (good == 1 + 9) {
      EXPECT_EQ(ChangeLogV0(is).songs.size(), 1U);
    } else if (good >= 1 + 10 + 9) {
      EXPECT_EQ(ChangeLogV0(is).songs.size(), 2U);
    } else {
      EXPECT_THROW(ChangeLogV0{is}, std::ios_base::failure) << good;
    }
  }
}

TEST(ChangeLogV0, NamesTheBytesThatAreNotItsMagic) {
  EXPECT_EQ(MessageOf<version0::IDError>([] { Read<ChangeLogV0>("ZUNOabcd"); }),
            "Version0 ChangeLog must begin with ZUNA. Begins with ZUNO at 4");
}

TEST(ChangeLogV0, SetsTheExceptionMask) {
  std::istringstream is(Written(LogOf({"7"})));
  const ChangeLogV0 log(is);
  EXPECT_EQ(is.exceptions(), std::ios_base::failbit | std::ios_base::badbit);
}

TEST(ChangeLogV0, EveryTruncationIsRefused) {
  const std::string bytes = Written(LogOf({"1", "2"}));
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    // Already in the header, whose reader sets no exception mask: the log's own does.
    EXPECT_THROW(Read<ChangeLogV0>(bytes.substr(0, length)), std::ios_base::failure) << length;
  }
}

TEST(ChangeLogV0, RefusesToWriteATextOf256Bytes) {
  for (std::string ChangeLogV0::*const text : {&ChangeLogV0::log_label, &ChangeLogV0::show_name}) {
    ChangeLogV0 log = LogOf({"7"});
    log.*text = std::string(255, 'x');
    EXPECT_EQ(Read<ChangeLogV0>(Written(log)).*text, log.*text);
    log.*text += 'x';
    std::ostringstream os;
    EXPECT_EQ(MessageOf<std::length_error>([&] { log.write_binary(os); }),
              "String length is limited to 256 characters");
    EXPECT_EQ(os.str().substr(0, 4), "ZUNA") << "what stands before it has been written";
  }
}

TEST(ChangeLogV0, WhatIsWrittenReadsBackEqualAndStatesItsSize) {
  std::mt19937 random(31);
  for (int i = 0; i < 200; ++i) {
    const ChangeLogV0 log = zuna_test::RandomLegacyLog(random);
    const std::string bytes = Written(log);
    const auto back = Read<ChangeLogV0>(bytes);
    ASSERT_TRUE(back == log);
    ASSERT_EQ(Written(back), bytes);
    std::istringstream is(bytes.substr(4));
    std::uint32_t size = 0;
    for (unsigned byte = 0; byte < 4; ++byte) size |= static_cast<std::uint32_t>(is.get()) << (8 * byte);
    ASSERT_EQ(size, bytes.size() - 8);
  }
}

TEST(ChangeLogV0, EverythingButTheValuesCountsInComparisons) {
  const auto differs = [](auto change) {
    ChangeLogV0 other = LogOf({"1", "2"});
    change(other);
    return LogOf({"1", "2"}) != other && !(LogOf({"1", "2"}) == other);
  };
  EXPECT_TRUE(differs([](ChangeLogV0& log) { log.identifier = kit::UUID::Nil(); }));
  EXPECT_TRUE(differs([](ChangeLogV0& log) { log.log_label = "first"; }));
  EXPECT_TRUE(differs([](ChangeLogV0& log) { log.show_name = "opera"; }));
  EXPECT_TRUE(differs([](ChangeLogV0& log) { log.log_tag_pair.first = 9; }));
  EXPECT_TRUE(differs([](ChangeLogV0& log) { log.log_tag_pair.second = 9; }));
  EXPECT_TRUE(differs([](ChangeLogV0& log) { log.songs["2"].songName_ = "x"; }));
  EXPECT_TRUE(differs([](ChangeLogV0& log) { log.songs.erase("2"); })) << "too short on the right";
  EXPECT_FALSE(differs([](ChangeLogV0& log) { log.songs["2"].cuts[0].value = 9; }));
}

TEST(ChangeLogV0, ComparisonWalksTheLeftSongsOnly) {
  EXPECT_TRUE(LogOf({"1"}) == LogOf({"1", "2"}));
  EXPECT_TRUE(LogOf({}) == LogOf({"1", "2"}));
  EXPECT_TRUE(LogOf({"1", "2"}) != LogOf({"1"}));
}

TEST(ChangeLogUpAndDown, KeepsTheHeader) {
  const CL::ChangeLog current = LogOf({"2", "10"}).get_version_1_0();
  EXPECT_EQ(current.show_name, "Opera");
  EXPECT_EQ(current.log_label, "First");
  EXPECT_EQ(current.identifier, LogOf({}).identifier);
  EXPECT_EQ(current.log_tag_pair, (std::pair<std::uint16_t, std::uint16_t>(1, 2)));
  ASSERT_EQ(current.song_logs().size(), 2U);
  EXPECT_EQ(current.song_logs().begin()->first, "10");
  EXPECT_EQ(Written(ChangeLogV0(current)), Written(LogOf({"2", "10"})));
}

TEST(ChangeLogDown, TheSongLogsOwnNumberCounts) {
  CL::ChangeLog current;
  for (const char* number : {"1", "2"}) current.AddSongLog(SongLog(number).get_version_1_0());
  current.GetSongLog("1")->song_name = "First";
  current.GetSongLog("2")->song_name = "Last";
  current.GetSongLog("1")->song_number = "2";
  const ChangeLogV0 log(current);
  ASSERT_EQ(log.songs.size(), 1U);
  EXPECT_EQ(log.songs.at("2").songName_, "Last");
}

TEST(ChangeLogDown, ASongLogThatIsNotThereIsNamed) {
  CL::ChangeLog current;
  current.song_logs()["7"] = nullptr;
  EXPECT_EQ(MessageOf<std::logic_error>([&] { ChangeLogV0 log(current); }),
            "A change log without the song log 7 cannot be converted");
}

TEST(ChangeLogUpAndDown, RandomLogsComeBackByteForByte) {
  std::mt19937 random(32);
  for (int i = 0; i < 200; ++i) {
    const ChangeLogV0 log = zuna_test::RandomLegacyLog(random);
    ASSERT_EQ(Written(ChangeLogV0(log.get_version_1_0())), Written(log));
  }
}

}  // namespace
