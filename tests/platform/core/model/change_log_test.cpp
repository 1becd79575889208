// The model of a log.

#include "CL/change_log.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ios>
#include <sstream>
#include <stdexcept>

#include "tests/support/bytes.h"

namespace {

using zuna_test::MessageOf;

std::shared_ptr<CL::SongLog> Song(const std::string& number, const std::string& name = "") {
  return std::make_shared<CL::SongLog>(number, name, static_cast<unsigned short>(480), 960U);
}

TEST(ChangeLog, StartsEmpty) {
  const CL::ChangeLog log;
  EXPECT_EQ(log.show_name, "");
  EXPECT_EQ(log.log_label, "");
  EXPECT_EQ(log.identifier, kit::UUID::Nil());
  EXPECT_EQ(log.log_tag_pair, std::make_pair(std::uint16_t{0}, std::uint16_t{0}));
  EXPECT_TRUE(log.song_logs().empty());
  EXPECT_EQ(log.file_version, (cmn::FileVersion{0, 0}));
}

TEST(ChangeLog, WalksSongsInByteOrder) {
  CL::ChangeLog log;
  for (const char* number : {"2", "10", "1"}) log.AddSongLog(Song(number));
  std::vector<std::string> numbers;
  for (const auto& [number, song] : log.song_logs()) numbers.push_back(number);
  EXPECT_THAT(numbers, testing::ElementsAre("1", "10", "2"));
}

TEST(ChangeLog, LaterSongOfTheSameNumberWins) {
  CL::ChangeLog log;
  log.AddSongLog(Song("1", "first"));
  log.AddSongLog(Song("1", "second"));
  EXPECT_EQ(log.song_logs().size(), 1U);
  EXPECT_EQ(log.song_logs().at("1")->song_name, "second");
  EXPECT_EQ(MessageOf<std::invalid_argument>([&] { log.AddSongLog(nullptr); }),
            "ChangeLog::AddSongLog: no song log was given");
}

TEST(ChangeLog, GivesASongToBeChanged) {
  CL::ChangeLog log;
  log.AddSongLog(Song("12a"));
  log.GetSongLog("12a")->attacca = 3;
  const CL::ChangeLog& constant = log;
  EXPECT_EQ(constant.GetSongLog("12a")->attacca, 3);
}

TEST(ChangeLog, ConstFormGivesASongToBeChangedToo) {
  CL::ChangeLog log;
  log.AddSongLog(Song("12a"));
  const CL::ChangeLog& constant = log;
  constant.GetSongLog("12a")->attacca = 4;
  EXPECT_EQ(log.GetSongLog("12a")->attacca, 4);
}

TEST(ChangeLog, MapOfSongLogsMayBeChangedAndReplaced) {
  CL::ChangeLog log;
  log.song_logs()["1"] = Song("1", "first");
  EXPECT_EQ(log.GetSongLog("1")->song_name, "first");
  for (auto& [number, song] : log.song_logs()) song = Song(number, "replaced");
  EXPECT_EQ(log.GetSongLog("1")->song_name, "replaced");
  log.song_logs() = {{"2", Song("2")}};
  EXPECT_EQ(log.song_logs().size(), 1U);
  log.song_logs().clear();
  EXPECT_TRUE(log.song_logs().empty());
}

TEST(ChangeLog, NamesTheKeyThatIsAbsent) {
  CL::ChangeLog log;
  log.AddSongLog(Song("1"));
  const CL::ChangeLog& constant = log;
  const std::string message = "The log has no song with the number \"01\"";
  EXPECT_EQ(MessageOf<std::out_of_range>([&] { log.GetSongLog("01"); }), message);
  EXPECT_EQ(MessageOf<std::out_of_range>([&] { constant.GetSongLog("01"); }), message);
}

TEST(ChangeLog, CopyHasItsOwnMapOfTheSameSongs) {
  CL::ChangeLog log;
  log.AddSongLog(Song("1"));
  CL::ChangeLog copy = log;
  copy.AddSongLog(Song("2"));
  EXPECT_EQ(log.song_logs().size(), 1U);
  EXPECT_EQ(copy.GetSongLog("1"), log.GetSongLog("1"));
  log = copy;
  copy.AddSongLog(Song("3"));
  EXPECT_EQ(log.song_logs().size(), 2U);
  EXPECT_EQ(log.GetSongLog("2"), copy.GetSongLog("2"));
  log = std::move(copy);
  EXPECT_EQ(log.song_logs().size(), 3U);
}

TEST(SongLog, StartsWithNineEmptyLists) {
  const CL::SongLog song("12a", "Overture", 480, 7680);
  EXPECT_EQ(song.song_number, "12a");
  EXPECT_EQ(song.song_name, "Overture");
  EXPECT_EQ(song.division, 480);
  EXPECT_EQ(song.song_length, 7680U);
  EXPECT_EQ(song.attacca, 0);
  EXPECT_TRUE(song.vamps->events.empty() && song.repeats->events.empty() && song.cuts->events.empty());
  EXPECT_TRUE(song.transposes->events.empty() && song.tempo_scales->events.empty());
  EXPECT_TRUE(song.markers->events.empty() && song.clicks->events.empty());
  EXPECT_TRUE(song.fermatas->events.empty() && song.caesuras->events.empty());
}

TEST(SongLog, CopySharesItsLists) {
  const CL::SongLog song("1", "", 480, 7680);
  const CL::SongLog copy = song;
  copy.vamps->events.emplace_back(0U, 480U, "", 2);
  EXPECT_EQ(song.vamps->events.size(), 1U);
}

TEST(SongLog, IsAssignedWithAllItsMembers) {
  CL::SongLog song("1", "One", 480, 7680);
  song.attacca = 2;
  song.caesuras->events.emplace_back(1U, "");
  CL::SongLog other("2", "", 0, 0);
  other = song;
  EXPECT_EQ(other.song_number, "1");
  EXPECT_EQ(other.song_name, "One");
  EXPECT_EQ(other.division, 480);
  EXPECT_EQ(other.song_length, 7680U);
  EXPECT_EQ(other.attacca, 2);
  EXPECT_EQ(other.caesuras, song.caesuras);
  CL::SongLog moved("3", "", 0, 0);
  moved = std::move(other);
  EXPECT_EQ(moved.song_name, "One");
  const CL::SongLog constructed = std::move(moved);
  EXPECT_EQ(constructed.caesuras, song.caesuras);
}

TEST(SongLog, ListsMayBeReplaced) {
  CL::SongLog song("1", "", 480, 7680);
  const auto list = std::make_shared<CL::EventList<CL::Vamp>>();
  list->events.emplace_back(0U, 480U, "", 2);
  song.vamps = list;
  song.markers.reset();
  EXPECT_EQ(song.vamps->events.size(), 1U);
  EXPECT_EQ(song.markers, nullptr);
}

TEST(SongLog, PrintsAMissingListAsAnEmptyOne) {
  const CL::SongLog whole("1", "", 480, 7680);
  CL::SongLog song = whole;
  song.vamps.reset();
  song.repeats.reset();
  song.cuts.reset();
  song.transposes.reset();
  song.tempo_scales.reset();
  song.markers.reset();
  song.clicks.reset();
  song.fermatas.reset();
  song.caesuras.reset();
  std::ostringstream expected;
  std::ostringstream os;
  whole.WriteStringDetailed(expected, 0);
  song.WriteStringDetailed(os, 0);
  EXPECT_EQ(os.str(), expected.str());
}

TEST(SongLog, PrintsEveryListWithItsEvents) {
  CL::SongLog song("12a", "Overture", 480, 7680);
  song.attacca = 1;
  song.vamps->events = {{0, 480, "", 2}, {960, 1440, "til cue", -1}};
  song.repeats->events = {{0, 480, "", 3}};
  song.cuts->events = {{0, 480, "", 4}};
  song.transposes->events = {{0, 480, "", -5}};
  song.tempo_scales->events = {{0, 480, "", 1.5F}};
  song.markers->events = {{0, "", "A"}};
  song.clicks->events = {{0, 480, "", 6}};
  song.fermatas->events = {{0, 480, "", 7}};
  song.caesuras->events = {{1920, ""}};
  std::ostringstream os;
  song.WriteStringDetailed(os, 1);
  EXPECT_EQ(os.str(),
            "\tSongLog(songNumber=12a, songName=Overture, division=480, songLength=7680, attacca=1)\n"
            "\t\tVampSequence(evt_count=2):\n"
            "\t\t\tVamp(0, 480, 2)\n"
            "\t\t\tVamp(960, 1440, -1) \"til cue\"\n"
            "\t\tRepeatSequence(evt_count=1):\n"
            "\t\t\tRepeat(0, 480, 3)\n"
            "\t\tCutSequence(evt_count=1):\n"
            "\t\t\tCut(0, 480, 4)\n"
            "\t\tTransposeSequence(evt_count=1):\n"
            "\t\t\tTranspose(0, 480, -5)\n"
            "\t\tTempoScaleSequence(evt_count=1):\n"
            "\t\t\tTempoScale(0, 480, 1.5)\n"
            "\t\tMarkerSequence(evt_count=1):\n"
            "\t\t\tMarker(0, A)\n"
            "\t\tClickSequence(evt_count=1):\n"
            "\t\t\tClick(0, 480, 6)\n"
            "\t\tFermataSequence(evt_count=1):\n"
            "\t\t\tFermata(0, 480, 7)\n"
            "\t\tCaesuraSequence(evt_count=1):\n"
            "\t\t\tCaesura(1920, 0)\n");
}

TEST(SongLog, PrintsDecimalNumbersAndLeavesTheFlagsOfTheStream) {
  std::ostringstream os;
  os << std::hex << std::showbase;
  const CL::SongLog song("", "", 480, 4294967295U);
  song.WriteStringDetailed(os, -1);
  os << 255;
  EXPECT_EQ(os.str(),
            "SongLog(songNumber=, songName=, division=480, songLength=4294967295, attacca=0)\n"
            "\tVampSequence(evt_count=0):\n"
            "\tRepeatSequence(evt_count=0):\n"
            "\tCutSequence(evt_count=0):\n"
            "\tTransposeSequence(evt_count=0):\n"
            "\tTempoScaleSequence(evt_count=0):\n"
            "\tMarkerSequence(evt_count=0):\n"
            "\tClickSequence(evt_count=0):\n"
            "\tFermataSequence(evt_count=0):\n"
            "\tCaesuraSequence(evt_count=0):\n"
            "0xff");
}

}  // namespace
