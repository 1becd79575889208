#include "cli/logs/log_losses.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>

#include "cli/base/errors.h"
#include "cli/logs/fermatas.h"
#include "format_converter/version0/containers/change_log.h"

namespace zuna_cli {
namespace {

constexpr cmn::FileVersion kText{2, 0};

std::string TextForm(const CL::ChangeLog& log) {
  std::ostringstream text;
  log.WriteBinary(text, kText);
  return text.str();
}

CL::ChangeLog ThereAndBack(const CL::ChangeLog& log) { return version0::ChangeLogV0(log).get_version_1_0(); }

std::vector<std::string> LossTexts(const CL::ChangeLog& log) {
  std::vector<std::string> texts;
  for (const Loss& loss : DownLosses(log, ThereAndBack(log))) texts.push_back(LossText(loss));
  return texts;
}

std::shared_ptr<CL::SongLog> AddSong(CL::ChangeLog& log, const std::string& number) {
  auto song = std::make_shared<CL::SongLog>(number, "Name", std::uint16_t{0}, 1920U);
  log.AddSongLog(song);
  return song;
}

using Texts = std::vector<std::string>;

TEST(LogDownLosses, AreNoneForWhatTheLegacyFormatHolds) {
  CL::ChangeLog log;
  log.show_name = "Show";
  log.log_label = "label";
  log.log_tag_pair = {1, 65535};
  const auto song = AddSong(log, "1");
  song->vamps->events.emplace_back(0U, 480U, "", -128);
  song->clicks->events.emplace_back(480U, 0U, "", 127);
  song->tempo_scales->events.emplace_back(0U, 4294967295U, "", 1.1F);
  song->markers->events.emplace_back(0U, "", "A");
  song->caesuras->events.emplace_back(240U, "");
  EXPECT_EQ(LossTexts(log), Texts{});
  EXPECT_EQ(TextForm(ThereAndBack(log)), TextForm(log));
}

TEST(LogDownLosses, NameEveryKindAndItsFirst) {
  CL::ChangeLog log;
  for (const char* number : {"1", "2"}) {
    const auto song = AddSong(log, number);
    song->attacca = 3;
    song->division = 96;
    song->fermatas->events.emplace_back(1U, 2U, "", 3);
    song->cuts->events.emplace_back(0U, 1U, "", 128);
    song->tempo_scales->events.emplace_back(0U, 1U, "slow", 0.5F);
    song->markers->events.emplace_back(7U, "m", "A");
    for (const std::uint32_t word : {0U, 1U, 2U}) {
      song->caesuras->events.emplace_back(word, "").second_word = word;
    }
  }
  EXPECT_EQ(LossTexts(log),
            (Texts{"2 fermatas (song 1: Fermata(1, 2, 3); copy-fermatas brings it back)",
                   "2 attaccas (song 1: 3; copy-fermatas brings it back)",
                   "2 divisions (song 1: 96; up takes it from the show)",
                   "2 values beyond 8 bits (song 1: Cut(0, 1, 128) becomes Cut(0, 1, -128))",
                   "4 labels (song 1: TempoScale(0, 1, 0.5) \"slow\")",
                   "2 second words of caesuras (song 1: Caesura(1, 1) becomes Caesura(1, 0))",
                   "2 caesuras with a second word above 1 (song 1: Caesura(2, 2) is dropped)"}));
}

/// A song with a few edits, of which few cannot be kept.
void FillSong(CL::SongLog& song, std::mt19937& random) {
  const auto rarely = [&](std::uint32_t value) { return random() % 16 == 0 ? value : 0U; };
  const auto label = [&] { return rarely(1) == 0 ? "" : "label"; };
  const auto fill = [&](auto& list) {
    const int value = static_cast<int>(rarely(512)) + static_cast<int>(random() % 256) - 128;
    for (auto count = random() % 2; count > 0; --count) list.events.emplace_back(1U, 2U, label(), value);
  };
  song.attacca = static_cast<std::uint8_t>(rarely(1));
  song.division = static_cast<std::uint16_t>(rarely(480));
  fill(*song.vamps);
  fill(*song.repeats);
  fill(*song.cuts);
  fill(*song.transposes);
  fill(*song.clicks);
  if (rarely(1) != 0) fill(*song.fermatas);
  song.tempo_scales->events.emplace_back(1U, 2U, label(), 0.1F);
  song.markers->events.emplace_back(1U, label(), "text");
  song.caesuras->events.emplace_back(1U, label()).second_word =
      rarely(static_cast<std::uint32_t>(random() % 4));
}

TEST(LogDownLosses, AreReportedExactlyWhereSomethingIsLost) {
  std::mt19937 random(1);
  std::size_t lossless = 0;
  for (int round = 0; round < 500; ++round) {
    CL::ChangeLog log;
    FillSong(*AddSong(log, "1"), random);
    const bool same = TextForm(ThereAndBack(log)) == TextForm(log);
    EXPECT_EQ(LossTexts(log).empty(), same) << TextForm(log);
    if (same) ++lossless;
  }
  EXPECT_GT(lossless, 50U);
  EXPECT_LT(lossless, 450U);
}

TEST(TakeDivisions, FillsTheSongsOfBothAndNamesTheOthers) {
  version0::ShowData show;
  for (const char* number : {"1", "2", "9"}) {
    show.songs[number].division = 480;
    show.songs[number].song_name = "Name";
  }
  show.songs["2"].song_name = "Other";
  CL::ChangeLog log;
  for (const char* number : {"1", "2", "3", "4"}) AddSong(log, number);
  EXPECT_EQ(TakeDivisions(show, "file", log),
            (Texts{"songs 3, 4 are not in file; the division stays 0",
                   "1 song has another name in file (song 2: \"Name\", there \"Other\")"}));
  EXPECT_EQ(log.GetSongLog("2")->division, 480U);
  EXPECT_EQ(log.GetSongLog("3")->division, 0U);
  show.songs.clear();
  EXPECT_THROW(TakeDivisions(show, "file", log), Failure);
}

TEST(CompareFermatas, CountsWhatIsCopiedReplacedAndMissing) {
  CL::ChangeLog source;
  CL::ChangeLog destination;
  AddSong(source, "1")->fermatas->events.emplace_back(1U, 2U, "", 3);
  AddSong(source, "2")->attacca = 1;
  AddSong(source, "3");
  AddSong(source, "4");
  AddSong(destination, "1")->fermatas->events.emplace_back(1U, 2U, "label", 3);
  AddSong(destination, "2")->attacca = 1;
  const FermataCopy copy = CompareFermatas(source, destination);
  EXPECT_EQ(copy.fermatas, 1U);
  EXPECT_EQ(copy.attaccas, 1U);
  EXPECT_EQ(copy.songs, 2U);
  EXPECT_EQ(copy.replaced_fermatas, 1U);
  EXPECT_EQ(copy.replaced_attaccas, 0U);
  EXPECT_EQ(copy.missing_songs, "3, 4");
}

}  // namespace
}  // namespace zuna_cli
