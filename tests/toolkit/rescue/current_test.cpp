// What comes back of damaged files of current versions: the songs before the damage, and those after it where
// they can be found.
#include <gtest/gtest.h>

#include <map>
#include <type_traits>

#include "CL/log_records.h"
#include "tests/support/random_log.h"
#include "tests/support/random_show.h"
#include "tests/support/sample_models.h"
#include "tests/support/sanitized.h"
#include "tests/toolkit/rescue/rescue_samples.h"
#include "toolkit/error.h"
#include "zuna_midi/show_records.h"

namespace {

using zuna_toolkit::Rescued;

constexpr unsigned kSongs = 12;

/// A show with songs "101" to "112".
zuna_midi::ShowData MakeShow(std::mt19937& random) {
  zuna_midi::ShowData show;
  show.show_name = "Opera";
  while (show.songs().size() < kSongs) {
    const zuna_midi::ShowData more = zuna_test::RandomShow(random, {4, 3, 5, 12});
    for (const auto& [number, song] : more.songs()) {
      if (show.songs().size() == kSongs) break;
      song->song_number = std::to_string(101 + show.songs().size());
      song->song_name = "Tune";
      show.AddSongData(song);
    }
  }
  return show;
}

CL::ChangeLog MakeLog(std::mt19937& random) {
  CL::ChangeLog log;
  log.show_name = "Opera";
  while (log.song_logs().size() < kSongs) {
    const CL::ChangeLog more = zuna_test::RandomLog(random, {4, 4, false});
    for (const auto& [number, song] : more.song_logs()) {
      if (log.song_logs().size() == kSongs) break;
      song->song_number = std::to_string(101 + log.song_logs().size());
      song->song_name = "Tune";
      log.AddSongLog(song);
    }
  }
  return log;
}

/// `model` with only one of its songs.
zuna_midi::ShowData With(const zuna_midi::ShowData& show, const std::string& number) {
  zuna_midi::ShowData one;
  one.AddSongData(show.songs().at(number));
  return one;
}
CL::ChangeLog With(const CL::ChangeLog& log, const std::string& number) {
  CL::ChangeLog one;
  one.AddSongLog(log.song_logs().at(number));
  return one;
}

const auto& SongsOf(const zuna_midi::ShowData& show) { return show.songs(); }
const auto& SongsOf(const CL::ChangeLog& log) { return log.song_logs(); }

/// The songs that came back the same as they are in `model`.
template <typename Model>
std::set<std::string> CameBack(const Model& model, const std::string& plaintext) {
  std::set<std::string> same;
  try {
    const Rescued rescued = zuna_test::RescuedOf(plaintext);
    const Model* saved = rescued.document.As<Model>();
    if (saved == nullptr) return same;
    for (const auto& [number, song] : SongsOf(*saved)) {
      if (!SongsOf(model).contains(number)) continue;
      const cmn::FileVersion text{2, 0};
      const bool is_same =
          zuna_test::WrittenAt(With(*saved, number), text) == zuna_test::WrittenAt(With(model, number), text);
      if (is_same) same.insert(number);
    }
  } catch (const zuna_toolkit::Error& error) {
    EXPECT_EQ(error.code(), zuna_toolkit::ErrorCode::kNothingToSave) << error.what();
  }
  return same;
}

/// Where each song of `model` ends in `bytes`, its file of this version.
template <typename Model>
std::map<std::string, std::size_t> EndsOf(const Model& model, const std::string& bytes,
                                          const cmn::FileVersion& version) {
  std::map<std::string, std::size_t> ends;
  if (version.major == 2) {
    std::string last;
    for (const auto& [number, song] : SongsOf(model)) {
      if (!last.empty()) ends[last] = bytes.rfind('}', bytes.find("\"songNumber\": \"" + number)) + 1;
      last = number;
    }
    ends[last] = bytes.find_last_of(']') - 1;
    return ends;
  }
  std::size_t at = 10;
  if constexpr (std::is_same_v<Model, CL::ChangeLog>) {
    for (unsigned left = CL::ReadLogHead(bytes, at, version).songs; left > 0; --left) {
      const std::string number = CL::ReadSongLog(bytes, at, version)->song_number;
      ends[number] = at;
    }
  } else {
    for (unsigned left = zuna_midi::ReadShowHead(bytes, at, version).songs; left > 0; --left) {
      const std::string number = zuna_midi::ReadSong(bytes, at, version)->song_number;
      ends[number] = at;
    }
  }
  return ends;
}

template <typename Model>
void ExpectSongsBeforeEveryCut(const Model& model, const cmn::FileVersion& version) {
  const std::string bytes = zuna_test::WrittenAt(model, version);
  const auto ends = EndsOf(model, bytes, version);
  ASSERT_EQ(ends.size(), kSongs);
  const std::size_t step = version.major == 2 ? 29 : 3;
  for (std::size_t cut = ends.at("101"); cut < bytes.size(); cut = zuna_test::NextCut(cut, step)) {
    const std::set<std::string> same = CameBack(model, bytes.substr(0, cut));
    for (const auto& [number, end] : ends) {
      ASSERT_TRUE(end > cut || same.contains(number)) << "song " << number << ", cut at " << cut;
    }
  }
}

/// The songs before the first damaged byte come back, and with one damaged byte also all but one or two after
/// it.
template <typename Model>
void ExpectSongsAroundDamage(const Model& model, const cmn::FileVersion& version) {
  std::mt19937 random(11);
  const std::string bytes = zuna_test::WrittenAt(model, version);
  const auto ends = EndsOf(model, bytes, version);
  for (int round = 0; round < 60; ++round) {
    for (const std::size_t count : {1U, 8U}) {
      std::set<std::size_t> offsets;
      const std::string damaged = zuna_test::Damaged(bytes, count, random, offsets);
      const std::set<std::string> same = CameBack(model, damaged);
      for (const auto& [number, end] : ends) {
        if (end <= *offsets.begin() && *offsets.begin() > 200) {
          EXPECT_TRUE(same.contains(number))
              << number << " ends at " << end << ", damaged from " << *offsets.begin();
        }
      }
      if (count == 1 && *offsets.begin() > 200) {
        EXPECT_GE(same.size(), kSongs - 2) << "damaged at " << *offsets.begin();
      }
    }
  }
}

class RescueOfCurrentFiles : public testing::TestWithParam<cmn::FileVersion> {};

TEST_P(RescueOfCurrentFiles, SavesTheSongsBeforeEveryCut) {
  std::mt19937 random(1);
  ExpectSongsBeforeEveryCut(MakeShow(random), GetParam());
  if (GetParam() != cmn::FileVersion{1, 0}) ExpectSongsBeforeEveryCut(MakeLog(random), GetParam());
}

TEST_P(RescueOfCurrentFiles, SavesTheSongsAroundDamage) {
  std::mt19937 random(2);
  ExpectSongsAroundDamage(MakeShow(random), GetParam());
  if (GetParam() != cmn::FileVersion{1, 0}) ExpectSongsAroundDamage(MakeLog(random), GetParam());
}

TEST_P(RescueOfCurrentFiles, KeepsTheVersionAndTheName) {
  std::mt19937 random(3);
  const zuna_midi::ShowData show = MakeShow(random);
  const std::string bytes = zuna_test::WrittenAt(show, GetParam());
  const Rescued rescued = zuna_test::RescuedOf(bytes.substr(0, bytes.size() / 2));
  EXPECT_EQ(rescued.document.type(), (zuna_toolkit::FileType{cmn::FileKind::kShow, GetParam()}));
  EXPECT_EQ(rescued.document.As<zuna_midi::ShowData>()->show_name, "Opera");
  EXPECT_FALSE(rescued.report.complete());
  EXPECT_GT(rescued.report.saved(), 0U);
  EXPECT_FALSE(rescued.report.songs.front().vouched);
}

INSTANTIATE_TEST_SUITE_P(Versions, RescueOfCurrentFiles,
                         testing::Values(cmn::FileVersion{1, 0}, cmn::FileVersion{1, 1},
                                         cmn::FileVersion{1, 2}, cmn::FileVersion{2, 0}),
                         [](const auto& test) {
                           return "V" + std::to_string(test.param.major) + std::to_string(test.param.minor);
                         });

TEST(RescueOfCurrentHeaders, VouchesForASongBehindADamagedHeader) {
  std::mt19937 random(4);
  const zuna_midi::ShowData show = MakeShow(random);
  const std::string bytes = zuna_test::WrittenAt(show, {1, 2});
  for (std::size_t offset = 1; offset < 10; ++offset) {
    std::string damaged = bytes;
    damaged[offset] = static_cast<char>(damaged[offset] ^ 0x40);
    const Rescued rescued = zuna_test::RescuedOf(damaged);
    EXPECT_TRUE(rescued.report.complete()) << offset;
    EXPECT_EQ(rescued.report.remarks,
              (std::vector<std::string>{"is not encrypted", "the header of its content is damaged"}));
    EXPECT_TRUE(rescued.report.songs.front().vouched);
    EXPECT_EQ(CameBack(show, damaged).size(), kSongs);
  }
}

using Texts = std::vector<std::string>;
using zuna_toolkit::SongState;

/// A show with songs "101" to "112" of version 1.2, and where its songs end.
struct ShowFile {
  std::string bytes;
  std::map<std::string, std::size_t> ends;

  ShowFile() {
    std::mt19937 random(4);
    const zuna_midi::ShowData show = MakeShow(random);
    bytes = zuna_test::WrittenAt(show, {1, 2});
    ends = EndsOf(show, bytes, {1, 2});
  }
};

TEST(RescueOfCurrentSongs, FindsTheSongsBehindZeros) {
  const ShowFile file;
  for (const std::size_t zeros : {20U, 100U}) {
    const Rescued rescued = zuna_test::RescuedOf(std::string(zeros, '\0') + file.bytes.substr(zeros));
    EXPECT_EQ(rescued.document.type(), (zuna_toolkit::FileType{cmn::FileKind::kShow, {1, 2}}));
    EXPECT_GE(rescued.report.saved(), kSongs - 2) << zeros;
    EXPECT_EQ(rescued.report.missing, Texts{"the show's name"});
    EXPECT_EQ(rescued.report.known_songs, std::nullopt);
  }
}

TEST(RescueOfCurrentSongs, SavesTheBeginningOfASongThatIsCut) {
  for (const cmn::FileVersion version : {cmn::FileVersion{1, 0}, {1, 1}, {1, 2}}) {
    const std::string bytes = zuna_test::WrittenAt(zuna_test::SampleShow(), version);
    const std::size_t size = bytes.find("\xC1\x05");  // the status of the third message
    const Rescued rescued = zuna_test::RescuedOf(bytes.substr(0, size));
    ASSERT_EQ(rescued.report.songs.size(), 1U);
    EXPECT_EQ(rescued.report.songs[0].state, SongState::kPartly);
    EXPECT_EQ(rescued.report.songs[0].remarks, Texts{"what follows in it cannot be read"});
    EXPECT_FALSE(rescued.report.songs[0].vouched);
    const std::size_t time = version == cmn::FileVersion{1, 2} ? 1 : 4;
    EXPECT_EQ(rescued.report.unread, (std::vector<zuna_toolkit::ByteRange>{{size - time, size}}));
    const auto& song = *rescued.document.As<zuna_midi::ShowData>()->songs().at("2b");
    EXPECT_EQ(song.timeline->bars_beats.size(), 2U);
    EXPECT_EQ(song.voice_data->tracks().at(1)->messages.size(), 2U);
  }
}

TEST(RescueOfCurrentSongs, MakesNoSongOfZeros) {
  ShowFile file;
  const std::size_t begin = file.ends.at("103");
  file.bytes.insert(begin, 400, '\0');
  const Rescued rescued = zuna_test::RescuedOf(file.bytes);
  ASSERT_EQ(rescued.report.songs.size(), kSongs);
  EXPECT_EQ(rescued.report.unread.front(), (zuna_toolkit::ByteRange{begin, begin + 400}));
  EXPECT_EQ(rescued.report.songs[2].state, SongState::kPartly);
  EXPECT_EQ(rescued.report.songs[2].remarks, Texts{"its end does not meet the next song"});
  EXPECT_EQ(rescued.report.songs[3].state, SongState::kWhole);
}

TEST(RescueOfCurrentSongs, MakesNoSongOfTheChecksum) {
  ShowFile file;
  file.bytes[file.ends.at("103") - 1] = '\xFF';
  file.bytes.erase(file.ends.at("103"), 3);
  const Rescued rescued = zuna_test::RescuedOf(file.bytes);
  EXPECT_EQ(rescued.report.stated_songs, kSongs);
  EXPECT_EQ(rescued.report.known_songs, kSongs);
  EXPECT_LE(rescued.report.songs.size(), kSongs);
  for (const auto& song : rescued.report.songs) EXPECT_NE(song.number, "");
}

TEST(RescueOfCurrentSongs, VouchesForNoneWithoutTheChecksum) {
  ShowFile file;
  file.bytes.back() = static_cast<char>(file.bytes.back() ^ 1);
  const Rescued rescued = zuna_test::RescuedOf(file.bytes);
  EXPECT_EQ(rescued.report.saved(), kSongs);
  EXPECT_EQ(rescued.report.remarks, (Texts{"is not encrypted", "its checksum is wrong or missing"}));
  for (const auto& song : rescued.report.songs) {
    EXPECT_EQ(song.state, SongState::kWhole);
    EXPECT_FALSE(song.vouched);
  }
}

TEST(RescueOfCurrentSongs, TellsBytesAfterTheStatedEnd) {
  std::mt19937 random(4);
  const zuna_midi::ShowData show = MakeShow(random);
  for (const cmn::FileVersion& version : {cmn::FileVersion{1, 0}, {1, 1}, {1, 2}}) {
    const std::string bytes = zuna_test::WrittenAt(show, version);
    const Rescued rescued = zuna_test::RescuedOf(bytes + "xy");
    const std::size_t size = bytes.size();
    EXPECT_EQ(rescued.report.remarks,
              (Texts{"is not encrypted", "has " + std::to_string(size + 2) +
                                             " bytes, and its header states " + std::to_string(size)}));
    EXPECT_EQ(rescued.report.unread, (std::vector<zuna_toolkit::ByteRange>{{size, size + 2}}));
    EXPECT_FALSE(rescued.report.complete());
    EXPECT_EQ(rescued.report.stated_songs, kSongs);
    EXPECT_EQ(rescued.report.known_songs, kSongs);
    for (const auto& song : rescued.report.songs) {
      EXPECT_EQ(song.remarks, Texts());
      EXPECT_EQ(song.vouched, version.minor > 0);
    }
  }
}

TEST(RescueOfCurrentSongs, TellsAVersionThatIsNotKnown) {
  ShowFile file;
  file.bytes[9] = 3;
  file.bytes.back() = static_cast<char>(file.bytes.back() ^ 1);  // Such a file has another checksum.
  const Rescued rescued = zuna_test::RescuedOf(file.bytes);
  EXPECT_EQ(rescued.report.saved(), kSongs);
  EXPECT_EQ(rescued.document.type().version, (cmn::FileVersion{1, 2}));
  EXPECT_EQ(rescued.report.remarks,
            (Texts{"is not encrypted",
                   "states version 1.3, which this release does not know; it is read as version 1.2"}));
  EXPECT_FALSE(rescued.report.changed);
  EXPECT_FALSE(rescued.report.songs.front().vouched);
}

TEST(RescueOfCurrentSongs, ChecksTheChecksumAtTheStatedEnd) {
  ShowFile file;
  file.bytes.back() = static_cast<char>(file.bytes.back() ^ 1);
  const std::size_t size = file.bytes.size();
  const Rescued rescued = zuna_test::RescuedOf(file.bytes + "xy");
  EXPECT_EQ(rescued.report.remarks, (Texts{"is not encrypted", "its checksum is wrong or missing",
                                           "has " + std::to_string(size + 2) +
                                               " bytes, and its header states " + std::to_string(size)}));
  for (const auto& song : rescued.report.songs) EXPECT_EQ(song.state, SongState::kWhole);
}

TEST(RescueOfCurrentSongs, TellsHowManySongsAWholeFileStates) {
  EXPECT_EQ(zuna_test::RescuedOf(ShowFile().bytes).report.stated_songs, kSongs);
  const std::string text = zuna_test::WrittenAt(zuna_midi::ShowData(), {2, 0});
  EXPECT_EQ(zuna_test::RescuedOf(text).report.stated_songs, std::nullopt);
}

TEST(RescueOfCurrentSongs, KeepsTheSongsOfJoinedFilesApart) {
  const ShowFile file;
  const Rescued rescued = zuna_test::RescuedOf(file.bytes + file.bytes);
  ASSERT_EQ(rescued.report.songs.size(), 2 * kSongs);
  EXPECT_EQ(rescued.report.songs[0].number, "101");
  EXPECT_EQ(rescued.report.songs[kSongs - 1].number, "112");
  EXPECT_EQ(rescued.report.songs[kSongs].number, "101 (2)");
  EXPECT_EQ(rescued.report.stated_songs, 2 * kSongs);
}

}  // namespace
