// What comes back of damaged legacy shows: every song that the damage does not touch.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "tests/support/random_legacy_show.h"
#include "tests/support/sanitized.h"
#include "tests/toolkit/rescue/rescue_samples.h"
#include "toolkit/error.h"

namespace {

using namespace std::string_literals;
using zuna_test::CameBack;
using zuna_test::Part;
using zuna_test::RescuedOf;
using zuna_test::Sample;
using zuna_toolkit::LegacyShow;
using zuna_toolkit::Rescued;

constexpr std::size_t kSongs = 20;

/// A song of a few hundred bytes with something in every list.
version0::SongData SmallSong(std::mt19937& random, const std::string& number) {
  version0::SongData song;
  song.song_number = number;
  song.song_name = std::string(random() % 12, 'n');
  song.division = 480;
  song.song_length = static_cast<std::uint32_t>(random());
  song.tracks = {{1, "Piano"}, {9, "Drums"}};
  for (std::size_t i = 0; i <= random() % 12; ++i) {
    const auto id = static_cast<std::uint8_t>(i % 2 == 0 ? 1 : 9);
    song.events[id].emplace_back(0, static_cast<std::uint32_t>(random()), 0x90, 60, 100, id);
  }
  song.timeline.name = number;
  song.timeline.tempos = {{0, 0.001F, 8, 8, 120}};
  song.timeline.meters = {{0, 4, 4}, {1920, 3, 4}};
  song.timeline.keys = {{0, 1, 0}};
  song.timeline.page_nums = {{0, 1}};
  for (std::uint32_t bar = 0; bar < random() % 6; ++bar) {
    song.timeline.bars_beats.emplace_back(bar * 1920, std::to_string(bar), std::uint8_t{0});
  }
  return song;
}

/// A show of 20 songs.
Sample MakeSample(std::mt19937& random) {
  version0::ShowData show;
  for (std::size_t i = 1; i <= kSongs; ++i)
    show.songs[std::to_string(i)] = SmallSong(random, std::to_string(i));
  Sample sample;
  sample.bytes = static_cast<char>(kSongs);
  for (const auto& [number, song] : show.songs) {
    const std::string bytes = zuna_test::Written(song);
    sample.parts.push_back({number, sample.bytes.size(), sample.bytes.size() + bytes.size(), bytes});
    sample.bytes += bytes;
  }
  return sample;
}

/// The songs that came back, as their writer writes them; none where nothing could be saved.
std::vector<std::string> SongsOf(const std::string& plaintext) {
  std::vector<std::string> songs;
  try {
    const Rescued rescued = RescuedOf(plaintext);
    for (const auto& [number, song] : rescued.document.As<LegacyShow>()->show.songs) {
      songs.push_back(zuna_test::Written(song));
    }
  } catch (const zuna_toolkit::Error& error) {
    EXPECT_EQ(error.code(), zuna_toolkit::ErrorCode::kNothingToSave) << error.what();
  }
  return songs;
}

TEST(RescueOfLegacyShows, SavesTheSongsBeforeEveryCut) {
  std::mt19937 random(1);
  const Sample sample = MakeSample(random);
  for (std::size_t cut = 0; cut <= sample.bytes.size(); cut = zuna_test::NextCut(cut)) {
    const std::vector<std::string> songs =
        cut == 0 ? std::vector<std::string>() : SongsOf(sample.bytes.substr(0, cut));
    for (const Part& part : sample.parts) {
      if (part.end > cut) break;
      ASSERT_NE(std::find(songs.begin(), songs.end(), part.bytes), songs.end())
          << "song " << part.number << ", cut at " << cut;
    }
  }
}

TEST(RescueOfLegacyShows, TellsHowManySongsThereWereBeforeACut) {
  std::mt19937 random(5);
  const Sample sample = MakeSample(random);
  for (const std::size_t song : {kSongs - 3, kSongs - 2}) {
    const Part& cut = sample.parts.at(song);
    for (const std::size_t end : {cut.begin + 20, (cut.begin + cut.end) / 2, cut.end - 10}) {
      EXPECT_EQ(RescuedOf(sample.bytes.substr(0, end)).report.known_songs, kSongs) << "cut at " << end;
    }
  }
}

TEST(RescueOfLegacyShows, SavesTheSongsAfterEveryCutAtTheFront) {
  std::mt19937 random(2);
  const Sample sample = MakeSample(random);
  for (std::size_t cut = 1; cut < sample.bytes.size(); cut = zuna_test::NextCut(cut, 7)) {
    const std::vector<std::string> songs = SongsOf(sample.bytes.substr(cut));
    for (const Part& part : sample.parts) {
      if (part.begin <= cut) continue;
      ASSERT_NE(std::find(songs.begin(), songs.end(), part.bytes), songs.end())
          << "song " << part.number << ", cut at " << cut;
    }
  }
}

TEST(RescueOfLegacyShows, SavesEverySongThatDamageDoesNotTouch) {
  std::mt19937 random(3);
  zuna_test::ExpectUntouchedSongs(random, 150, MakeSample, SongsOf);
}

TEST(RescueOfLegacyShows, SavesEverySongAroundBytesThatAreMissing) {
  std::mt19937 random(4);
  for (int round = 0; round < 200; ++round) {
    const Sample sample = MakeSample(random);
    const std::size_t begin = 1 + random() % (sample.bytes.size() - 1);
    const std::size_t end = begin + std::min<std::size_t>(random() % 700, sample.bytes.size() - begin);
    std::string damaged = sample.bytes;
    damaged.erase(begin, end - begin);
    const std::vector<std::string> songs = SongsOf(damaged);
    for (const Part& part : sample.parts) {
      if (part.begin < end && part.end > begin) continue;
      ASSERT_TRUE(CameBack(part, songs)) << "song " << part.number << " of round " << round;
    }
  }
}

/// A show of one song with so many events, without the end of it from the timeline on.
std::string ShowWithoutTimeline(std::size_t events) {
  version0::SongData song;
  song.song_number = "1";
  song.tracks = {{1, "Piano"}};
  for (std::size_t i = 0; i < events; ++i) song.events[1].emplace_back(0, 0, 0x90, 60, 100, 1);
  song.timeline.name = "1";
  const std::string show = "\1" + zuna_test::Written(song);
  return show.substr(0, show.find("TLMN"));
}

TEST(RescueOfLegacyShows, SavesTheEventsOfTheOnlySong) {
  const Rescued rescued = RescuedOf(ShowWithoutTimeline(8));
  EXPECT_EQ(rescued.document.As<LegacyShow>()->show.songs.at("1").events.at(1).size(), 8U);
  EXPECT_EQ(SongsOf(ShowWithoutTimeline(7)), std::vector<std::string>());
}

TEST(RescueOfLegacyShows, TakesEventsUpToOneThatNobodyWrites) {
  const std::string show = ShowWithoutTimeline(10);
  const std::size_t last = show.size() - 12;
  for (const auto& [offset, byte] : std::vector<std::pair<std::size_t, char>>{
           {8, '\x70'}, {8, '\x91'}, {9, '\x80'}, {10, '\x80'}, {11, '\2'}}) {
    std::string damaged = show;
    damaged[last + offset] = byte;
    const Rescued rescued = RescuedOf(damaged);
    EXPECT_EQ(rescued.report.songs.at(0).remarks.at(0), "has 9 of the 10 events that it states") << offset;
  }
}

TEST(RescueOfLegacyShows, TakesNoOtherBytesForSongs) {
  std::mt19937 random(6);
  for (int round = 0; round < zuna_test::Rounds(300); ++round) {
    std::string bytes(1 + random() % 4000, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    EXPECT_EQ(SongsOf(bytes), std::vector<std::string>()) << round;
  }
  std::string text;
  while (text.size() < 30'000) text += "A song begins with its length, and its timeline with TLMN. ";
  for (std::size_t size = text.size() - 100; size < text.size(); size = zuna_test::NextCut(size)) {
    EXPECT_EQ(SongsOf(text.substr(0, size)), std::vector<std::string>()) << size;
  }
}

TEST(RescueOfLegacyShows, SavesLargeRandomSongs) {
  std::mt19937 random(5);
  for (int round = 0; round < zuna_test::Rounds(60); ++round) {
    const version0::ShowData show = zuna_test::RandomLegacyShow(random);
    if (show.songs.size() < 2) continue;
    const std::string bytes = zuna_test::Written(show);
    std::set<std::size_t> offsets;
    const std::vector<std::string> songs = SongsOf(zuna_test::Damaged(bytes, 3, random, offsets));
    std::size_t begin = 1;
    for (const auto& [number, song] : show.songs) {
      const std::string written = zuna_test::Written(song);
      const Part part{number, begin, begin + written.size(), written};
      begin = part.end;
      EXPECT_TRUE(zuna_test::Touches(offsets, part) || CameBack(part, songs)) << round;
    }
  }
}

TEST(RescueOfLegacyShows, GoesOnWithTheNextListAfterDamage) {
  std::mt19937 random(8);
  Sample sample = MakeSample(random);
  const Part& part = sample.parts[3];
  const std::size_t timeline = sample.bytes.find("TLMN", part.begin);
  sample.bytes.replace(timeline, 30, std::string(30, '\0'));
  const Rescued rescued = RescuedOf(sample.bytes);
  const auto& song = rescued.report.songs.at(3);
  EXPECT_EQ(song.state, zuna_toolkit::SongState::kPartly);
  EXPECT_EQ(song.remarks.at(0), "the beginning of its timeline is missing");
  EXPECT_EQ(song.remarks.at(1), "its tempos, if it had any, are missing");
  const auto& timeline_back = rescued.document.As<LegacyShow>()->show.songs.at(song.number).timeline;
  EXPECT_EQ(timeline_back.meters.size(), 2U);
  EXPECT_EQ(timeline_back.keys.size(), 1U);
  EXPECT_EQ(timeline_back.page_nums.size(), 1U);
  ASSERT_EQ(rescued.report.unread.size(), 1U);
  EXPECT_EQ(rescued.report.unread[0].begin, timeline);
}

TEST(RescueOfLegacyShows, IsNothingWhereAllIsZero) {
  EXPECT_EQ(SongsOf(std::string(5000, '\0')), std::vector<std::string>());
}

}  // namespace
