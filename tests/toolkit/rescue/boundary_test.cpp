// Songs that end at a boundary of 64 KiB of the content, one byte or two before it, or after it: what comes
// back of them is that of any other song.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <set>

#include "tests/support/legacy_samples.h"
#include "tests/support/rescue_accounts.h"
#include "tests/support/sanitized.h"
#include "tests/toolkit/rescue/rescue_samples.h"
#include "toolkit/conversion/companion.h"
#include "toolkit/conversion/conversion.h"
#include "toolkit/document/write.h"
#include "toolkit/error.h"

namespace {

using zuna_test::RescuedOf;
using zuna_toolkit::Document;
using zuna_toolkit::Rescued;
using zuna_toolkit::RescuedSong;
using zuna_toolkit::SongState;

constexpr std::size_t kBoundary = 65536;
constexpr std::size_t kAround = zuna_test::kSanitized ? 1 : 2;  // bytes before and after it
constexpr std::size_t kLongestName = 80;  // bytes, more than an entry takes in any version

/// A document of three songs, of which the first one has so many entries and so long a name.
using Make = Document (*)(std::size_t entries, std::size_t name);

Document Show(std::size_t entries, std::size_t name) {
  version0::ShowData show;
  for (const char* number : {"1", "2", "3"}) show.songs[number] = zuna_test::SampleLegacySong(number, 480);
  version0::SongData& song = show.songs["1"];
  song.song_name = std::string(name, 'n');
  auto& [id, events] = *song.events.begin();
  for (std::size_t i = 0; i < entries; ++i) {
    events.emplace_back(1, events.back().abs_time + 1, 0x90, 60, static_cast<std::uint8_t>(i % 100), id);
  }
  return {zuna_toolkit::LegacyShow{show}, zuna_toolkit::kLegacyVersion, "file"};
}

Document Log(std::size_t entries, std::size_t name) {
  version0::ChangeLogV0 log = zuna_test::SampleLegacyLog();
  const version0::SongLogV0 sample = log.songs.at("12a");
  log.songs.clear();
  for (const char* number : {"1", "2", "3"}) {
    log.songs[number] = sample;
    log.songs[number].songNumber_ = number;
  }
  version0::SongLogV0& song = log.songs["1"];
  song.songName_ = std::string(name, 'n');
  const version0::XCaesura caesura = song.caesuras.front();
  song.caesuras.insert(song.caesuras.end(), entries, caesura);
  return {zuna_toolkit::LegacyLog{log}, zuna_toolkit::kLegacyVersion, "file"};
}

std::string BytesOf(const Document& legacy, const cmn::FileVersion& version) {
  zuna_toolkit::Companion companion;
  companion.show_name = "Opera";
  companion.division = 480;
  const bool is_legacy = version == zuna_toolkit::kLegacyVersion;
  const auto cipher = zuna_toolkit::CipherStreamOf(
      is_legacy ? legacy : zuna_toolkit::Up(legacy, companion, version), CipherKey{});
  return {std::istreambuf_iterator<char>(cipher->GetStream()), {}};
}

/// The songs of a whole file. Only the report of one that is cut has their places.
std::vector<RescuedSong> SongsOf(const std::string& bytes) {
  constexpr std::size_t kCut = 8;  // bytes, more than a checksum
  return RescuedOf(bytes.substr(0, bytes.size() - kCut)).report.songs;
}

std::size_t EndOfFirst(const std::string& bytes) {
  return static_cast<std::size_t>(SongsOf(bytes).at(0).end.value());
}

/// The most entries with which the first song ends before the boundary. None takes less than two bytes.
std::size_t EntriesBefore(Make make, const cmn::FileVersion& version) {
  std::size_t least = 0;
  std::size_t beyond = kBoundary / 2;
  while (beyond - least > 1) {
    const std::size_t entries = (least + beyond) / 2;
    const bool fits = EndOfFirst(BytesOf(make(entries, 1), version)) < kBoundary - kAround;
    (fits ? least : beyond) = entries;
  }
  return least;
}

/// What becomes of the first song of `bytes`. Nothing comes back of a text that ends inside of it.
SongState StateOfFirst(const std::string& bytes) {
  try {
    const Rescued rescued = RescuedOf(bytes);
    EXPECT_EQ(zuna_test::WrongAccount(rescued.report, bytes.size()), "");
    return rescued.report.songs.at(0).state;
  } catch (const zuna_toolkit::Error& error) {
    EXPECT_EQ(error.code(), zuna_toolkit::ErrorCode::kTextError) << error.what();
    return SongState::kLost;
  }
}

/// What becomes of the first song of `bytes` where the file is cut around its end, and where the second one
/// is damaged.
std::vector<SongState> StatesOfFirst(const std::string& bytes) {
  const Rescued whole = RescuedOf(bytes);
  EXPECT_TRUE(whole.report.complete());
  EXPECT_EQ(whole.report.saved(), 3U);
  const std::size_t end = EndOfFirst(bytes);
  std::vector<SongState> states;
  for (std::size_t size = end - kAround; size <= end + kAround; ++size) {
    states.push_back(StateOfFirst(bytes.substr(0, size)));
  }
  const std::size_t end_of_second = static_cast<std::size_t>(SongsOf(bytes).at(1).end.value());
  std::string damaged = bytes;
  damaged.erase(end + (end_of_second - end) / 2, 1);
  states.push_back(StateOfFirst(damaged));
  EXPECT_EQ(states.back(), SongState::kWhole);
  return states;
}

void ExpectSameAroundTheBoundary(Make make, const cmn::FileVersion& version) {
  if (zuna_test::kSanitized && version.major == 2) return;  // texts of 64 KiB take half a minute there
  SCOPED_TRACE(cmn::VersionText(version));
  const std::size_t entries = EntriesBefore(make, version);
  const std::vector<SongState> elsewhere = StatesOfFirst(BytesOf(make(entries / 2, 1), version));
  EXPECT_NE(elsewhere.front(), SongState::kWhole);
  std::set<std::size_t> ends;
  const std::size_t to_go = kBoundary - kAround - EndOfFirst(BytesOf(make(entries, 1), version));
  for (std::size_t name = std::max<std::size_t>(to_go, 2) - 1; name <= kLongestName; ++name) {
    const std::string bytes = BytesOf(make(entries, name), version);
    const std::size_t end = EndOfFirst(bytes);
    if (end > kBoundary + kAround) break;
    if (end < kBoundary - kAround) continue;
    ends.insert(end);
    EXPECT_EQ(StatesOfFirst(bytes), elsewhere) << end;
  }
  EXPECT_EQ(ends.size(), 2 * kAround + 1);
}

TEST(BoundaryOfRescue, IsNoneForShows) {
  for (const cmn::FileVersion version : {cmn::FileVersion{0, 0}, {1, 0}, {1, 1}, {1, 2}, {2, 0}}) {
    ExpectSameAroundTheBoundary(Show, version);
  }
}

TEST(BoundaryOfRescue, IsNoneForLogs) {
  for (const cmn::FileVersion version : {cmn::FileVersion{0, 0}, {1, 1}, {1, 2}, {2, 0}}) {
    ExpectSameAroundTheBoundary(Log, version);
  }
}

}  // namespace
