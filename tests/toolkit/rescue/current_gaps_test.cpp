// What is told of a song of a current version that is lost between others, and of the head before it: the
// number of songs that the head states shows which bytes were a song.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "CL/log_records.h"
#include "tests/support/rescue_accounts.h"
#include "tests/support/sample_models.h"
#include "tests/toolkit/rescue/rescue_samples.h"
#include "zuna_midi/show_records.h"

namespace {

using zuna_toolkit::Rescued;
using zuna_toolkit::RescueReport;
using zuna_toolkit::SongState;
using Texts = std::vector<std::string>;

const Texts kNumbers = {"101", "102", "103"};

/// A show or a log with the songs "101" to "103", and where they begin.
struct File {
  std::string bytes;
  std::vector<std::size_t> begins;
  cmn::FileVersion version;
  std::function<std::string(const Rescued&)> show_name;

  /// Where the length of the number of a song is, and that of its name.
  std::size_t number_at(std::size_t song) const { return begins[song]; }
  std::size_t name_at(std::size_t song) const {
    const std::size_t length = version == cmn::FileVersion{1, 2} ? 1 : 4;
    return begins[song] + length + kNumbers[song].size();
  }
};

File ShowFile(const cmn::FileVersion& version) {
  zuna_midi::ShowData show;
  show.show_name = "Opera";
  for (const std::string& number : kNumbers) {
    const auto song = zuna_test::SampleShow().songs().at("2b");
    song->song_number = number;
    show.AddSongData(song);
  }
  File file{zuna_test::WrittenAt(show, version), {}, version, {}};
  std::size_t at = 10;
  zuna_midi::ReadShowHead(file.bytes, at, version);
  for (std::size_t i = 0; i < kNumbers.size(); ++i) {
    file.begins.push_back(at);
    zuna_midi::ReadSong(file.bytes, at, version);
  }
  file.show_name = [](const Rescued& rescued) {
    return rescued.document.As<zuna_midi::ShowData>()->show_name;
  };
  return file;
}

File LogFile(const cmn::FileVersion& version) {
  CL::ChangeLog log = zuna_test::SampleLog();
  log.song_logs().clear();
  log.show_name = "Opera";
  for (const std::string& number : kNumbers) {
    const auto song = zuna_test::SampleLog().song_logs().at("2b");
    song->song_number = number;
    log.AddSongLog(song);
  }
  File file{zuna_test::WrittenAt(log, version), {}, version, {}};
  std::size_t at = 10;
  CL::ReadLogHead(file.bytes, at, version);
  for (std::size_t i = 0; i < kNumbers.size(); ++i) {
    file.begins.push_back(at);
    CL::ReadSongLog(file.bytes, at, version);
  }
  file.show_name = [](const Rescued& rescued) { return rescued.document.As<CL::ChangeLog>()->show_name; };
  return file;
}

std::vector<File> Files() {
  return {ShowFile({1, 0}), ShowFile({1, 1}), ShowFile({1, 2}), LogFile({1, 1}), LogFile({1, 2})};
}

void ExpectLost(const RescueReport& report, std::size_t lost, const std::string& number) {
  ASSERT_EQ(report.songs.size(), kNumbers.size());
  for (std::size_t i = 0; i < kNumbers.size(); ++i) {
    EXPECT_EQ(report.songs[i].state, i == lost ? SongState::kLost : SongState::kWhole) << i;
    EXPECT_EQ(report.songs[i].number, i == lost ? number : kNumbers[i]);
    EXPECT_EQ(report.songs[i].remarks, i == lost ? Texts{"its fields cannot be read"} : Texts()) << i;
  }
  EXPECT_EQ(report.stated_songs, kNumbers.size());
  EXPECT_EQ(report.known_songs, kNumbers.size());
  EXPECT_EQ(report.missing, Texts());
}

TEST(RescueOfASongBetweenOthers, NamesASongWhoseNameHasAWrongLength) {
  for (File& file : Files()) {
    for (std::size_t lost = 0; lost + 1 < kNumbers.size(); ++lost) {
      std::string bytes = file.bytes;
      bytes[file.name_at(lost)] = '\xC8';
      const Rescued rescued = zuna_test::RescuedOf(bytes);
      ExpectLost(rescued.report, lost, kNumbers[lost]);
      EXPECT_EQ(rescued.report.songs[lost].offset, file.begins[lost]);
      EXPECT_EQ(rescued.report.songs[lost].end, file.begins[lost + 1]);
      EXPECT_EQ(file.show_name(rescued), "Opera");
      EXPECT_EQ(zuna_test::WrongAccount(rescued.report, bytes.size()), "");
    }
  }
}

TEST(RescueOfASongBetweenOthers, KeepsTheHeadBeforeASongWithoutANumber) {
  for (File& file : Files()) {
    file.bytes[file.number_at(0)] = '\xC8';
    const Rescued rescued = zuna_test::RescuedOf(file.bytes);
    ExpectLost(rescued.report, 0, "");
    EXPECT_EQ(file.show_name(rescued), "Opera");
  }
}

TEST(RescueOfASongBetweenOthers, TakesNoHeadThatStatesAnotherNumberOfSongs) {
  for (File& file : Files()) {
    const std::size_t count = file.begins[0] - (file.version == cmn::FileVersion{1, 2} ? 1 : 4);
    file.bytes[count] = '\x05';
    file.bytes[file.name_at(0)] = '\xC8';
    const Rescued rescued = zuna_test::RescuedOf(file.bytes);
    ASSERT_EQ(rescued.report.missing.size(), 1U);
    EXPECT_EQ(rescued.report.stated_songs, std::nullopt);
    EXPECT_EQ(file.show_name(rescued), "");
    EXPECT_EQ(rescued.report.saved(), 2U);
  }
}

TEST(RescueOfASongBetweenOthers, DoesNotCallASongWholeThatLostItsEnd) {
  for (File& file : Files()) {
    for (std::size_t lost = 1; lost <= 4; ++lost) {
      std::string bytes = file.bytes;
      const std::size_t zeros = file.begins[1] - lost;
      std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(zeros),
                bytes.begin() + static_cast<std::ptrdiff_t>(file.begins[2]), '\0');
      const bool is_changed = bytes.substr(0, file.begins[1]) != file.bytes.substr(0, file.begins[1]);
      const RescueReport report = zuna_test::RescuedOf(bytes).report;
      ASSERT_FALSE(report.songs.empty());
      if (is_changed) {
        EXPECT_NE(report.songs[0].state, SongState::kWhole) << lost;
      }
      EXPECT_FALSE(report.complete());
    }
  }
}

TEST(RescueOfASongBetweenOthers, SaysThatTheLastSongIsWholeWhereOnlyTheChecksumIsCut) {
  for (const File& file : Files()) {
    if (file.version == cmn::FileVersion{1, 0}) continue;
    for (std::size_t cut = 1; cut <= 4; ++cut) {
      const RescueReport report = zuna_test::RescuedOf(file.bytes.substr(0, file.bytes.size() - cut)).report;
      ASSERT_EQ(report.songs.size(), kNumbers.size());
      for (const auto& song : report.songs) {
        EXPECT_EQ(song.state, SongState::kWhole) << cut;
        EXPECT_EQ(song.remarks, Texts()) << cut;
        EXPECT_FALSE(song.vouched);
      }
      EXPECT_FALSE(report.complete());
    }
  }
}

}  // namespace
