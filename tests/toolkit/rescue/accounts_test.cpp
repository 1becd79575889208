// What a report tells is true whatever the damage is: every byte is accounted for, songs are made of
// something, and what is written reads back.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>

#include "tests/support/legacy_samples.h"
#include "tests/support/random_legacy_log.h"
#include "tests/support/random_legacy_show.h"
#include "tests/support/random_log.h"
#include "tests/support/random_show.h"
#include "tests/support/rescue_accounts.h"
#include "tests/support/sample_models.h"
#include "tests/toolkit/rescue/rescue_samples.h"
#include "toolkit/document/write.h"
#include "toolkit/error.h"

namespace {

using zuna_toolkit::Rescued;
using zuna_toolkit::RescuedSong;
using zuna_toolkit::SongState;

/// Damages `bytes` in one of the ways that files get damaged.
std::string DamagedSomehow(std::string bytes, std::mt19937& random) {
  constexpr std::size_t kLengths[] = {1, 2, 5, 20, 100, 400};
  const std::size_t at = 1 + random() % (bytes.size() - 1);
  const std::size_t length = std::min(kLengths[random() % std::size(kLengths)], bytes.size() - at);
  std::string noise(length, '\0');
  for (char& byte : noise) byte = static_cast<char>(random());
  switch (random() % 6) {
    case 0:
      return bytes.erase(at, length);
    case 1:
      return bytes.insert(at, noise);
    case 2:
      return bytes.replace(at, length, noise);
    case 3:
      return bytes.replace(at, length, std::string(length, '\0'));
    case 4:
      return bytes.insert(random() % bytes.size(), bytes.substr(at, length));
    default:
      return bytes.substr(0, at);
  }
}

std::string PlaintextOf(const zuna_toolkit::Document& document) {
  const auto cipher = zuna_toolkit::CipherStreamOf(document, {});
  return {std::istreambuf_iterator<char>(cipher->GetStream()), {}};
}

/// Whether something came back.
bool ExpectTrueReport(const std::string& damaged, const std::string& what) {
  SCOPED_TRACE(what);
  try {
    const Rescued rescued = zuna_test::RescuedOf(damaged);
    EXPECT_EQ(zuna_test::WrongAccount(rescued.report, damaged.size()), "");
    const Rescued again = zuna_test::RescuedOf(PlaintextOf(rescued.document));
    EXPECT_EQ(again.document.type(), rescued.document.type());
    EXPECT_EQ(again.report.saved(), rescued.report.saved());
    EXPECT_EQ(PlaintextOf(again.document), PlaintextOf(rescued.document));
    EXPECT_TRUE(!rescued.report.complete() || rescued.report.unread.empty());
    for (const RescuedSong& song : rescued.report.songs) {
      EXPECT_TRUE(song.state == SongState::kWhole || !song.remarks.empty());
    }
    return true;
  } catch (const zuna_toolkit::Error& error) {
    const bool is_of_a_text = error.code() == zuna_toolkit::ErrorCode::kTextError;
    EXPECT_TRUE(is_of_a_text || error.code() == zuna_toolkit::ErrorCode::kNothingToSave) << error.what();
    return false;
  }
}

constexpr std::size_t kSongsOfWhichSomeAreLeft = 3;

/// Damages what `make` makes 150 times. Something comes back of most files with some songs.
template <typename Make>
void ExpectTrueReports(Make make, const std::string& what) {
  std::mt19937 random(7);
  int tried = 0;
  int saved = 0;
  for (int round = 0; round < 150; ++round) {
    const std::string bytes = make(random);
    if (bytes.size() < 2) continue;
    const bool came_back =
        ExpectTrueReport(DamagedSomehow(bytes, random), what + ", round " + std::to_string(round));
    if (zuna_test::RescuedOf(bytes).report.saved() < kSongsOfWhichSomeAreLeft) continue;
    ++tried;
    if (came_back) ++saved;
  }
  EXPECT_GT(tried, 30) << what;
  EXPECT_GT(2 * saved, tried) << what << ": something came back of " << saved << " of " << tried;
}

TEST(AccountsOfRescue, AreTrueOfLegacyShows) {
  ExpectTrueReports([](auto& random) { return zuna_test::Written(zuna_test::RandomLegacyShow(random)); },
                    "show");
}

TEST(AccountsOfRescue, AreTrueOfLegacyLogs) {
  ExpectTrueReports([](auto& random) { return zuna_test::Written(zuna_test::RandomLegacyLog(random)); },
                    "log");
}

TEST(AccountsOfRescue, AreTrueOfCurrentShows) {
  for (const cmn::FileVersion& version : cmn::SupportedVersions(cmn::FileKind::kShow)) {
    ExpectTrueReports(
        [&](auto& random) {
          return zuna_test::WrittenAt(zuna_test::RandomShow(random, {6, 3, 5, 12}), version);
        },
        "show of version " + cmn::VersionText(version));
  }
}

TEST(AccountsOfRescue, AreTrueOfCurrentLogs) {
  for (const cmn::FileVersion& version : cmn::SupportedVersions(cmn::FileKind::kLog)) {
    ExpectTrueReports(
        [&](auto& random) {
          return zuna_test::WrittenAt(zuna_test::RandomLog(random, {6, 4, false}), version);
        },
        "log of version " + cmn::VersionText(version));
  }
}

}  // namespace
