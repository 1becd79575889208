// What holds for findings of every document: sound ones have no errors, and no content is too strange.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>

#include "tests/support/bytes.h"
#include "tests/support/random_legacy_log.h"
#include "tests/support/random_legacy_show.h"
#include "tests/support/random_log.h"
#include "tests/support/random_show.h"
#include "tests/toolkit/checking/describe.h"
#include "toolkit/conversion/conversion.h"
#include "toolkit/document/open.h"

namespace zuna_toolkit {
namespace {

void ExpectNoErrors(const Document& document) {
  Check(document, [](const Finding& finding) {
    EXPECT_EQ(finding.severity, Severity::kWarning) << zuna_test::Describe(finding);
  });
}

/// Every finding is complete and has the song, the severity and the remedy that belong to it.
std::size_t CountFindings(const Document& document) {
  std::size_t count = 0;
  Check(document, [&](const Finding& finding) {
    ++count;
    EXPECT_FALSE(finding.problem.empty());
    EXPECT_EQ(finding.severity, SeverityOf(finding.code));
    EXPECT_EQ(finding.remedy, FindingExplanations()[static_cast<std::size_t>(finding.code)].remedy);
  });
  return count;
}

CipherKey SampleKey() {
  return {zuna_test::FromHex("7a756e612d73616d706c652d6b657921"), zuna_test::FromHex("73616d706c652d76")};
}

TEST(CheckProperty, FindsNothingInTheSamples) {
  const std::string folder = std::string(std::getenv("ZUNA_SOURCE")) + "/examples/three-tunes-";
  for (const char* name : {"0.0.showdata", "0.0.logdata", "1.2.showdata", "1.2.logdata"}) {
    const Document document = OpenDocument(folder + name, SampleKey());
    EXPECT_EQ(zuna_test::FindingsOf(document), std::vector<std::string>{}) << name;
  }
}

/// Whether a show comes down as it is: every song has a voice with messages.
bool ComesDown(const zuna_midi::ShowData& show) {
  const auto sounds = [](const auto& song) {
    const auto& voices = song.second->voice_data->tracks();
    return std::any_of(voices.begin(), voices.end(),
                       [](const auto& voice) { return !voice.second->messages.empty(); });
  };
  return std::all_of(show.songs().begin(), show.songs().end(), sounds);
}

TEST(CheckProperty, FindsNoErrorsInSoundShows) {
  std::mt19937 random(1);
  std::size_t came_down = 0;
  for (int round = 0; round < 200; ++round) {
    zuna_midi::ShowData show = zuna_test::RandomShow(random);
    ExpectNoErrors({show, {1, 2}, "show"});
    if (!ComesDown(show)) continue;
    const auto same_time = [](const auto& a, const auto& b) { return a.time == b.time; };
    for (const auto& [number, song] : show.songs()) {
      // The tempos of two meters at one time come down in disorder.
      auto& meters = song->timeline->meters;
      meters.erase(std::unique(meters.begin(), meters.end(), same_time), meters.end());
    }
    ExpectNoErrors(Down({show, {1, 2}, "show"}));
    ++came_down;
  }
  EXPECT_GT(came_down, 50U);
}

TEST(CheckProperty, FindsNoErrorsInSoundLogs) {
  std::mt19937 random(2);
  zuna_test::LogOptions options;
  options.wild = false;
  for (int round = 0; round < 200; ++round) {
    const Document log(zuna_test::RandomLog(random, options), {1, 2}, "log");
    ExpectNoErrors(log);
    ExpectNoErrors(Down(log));
  }
}

TEST(CheckProperty, TakesAnyContent) {
  std::mt19937 random(3);
  zuna_test::ShowOptions options;
  options.wild = true;
  std::size_t findings = 0;
  for (int round = 0; round < 200; ++round) {
    findings += CountFindings({zuna_test::RandomShow(random, options), {1, 2}, "show"});
    findings += CountFindings({zuna_test::RandomLog(random), {1, 2}, "log"});
    findings += CountFindings({LegacyShow{zuna_test::RandomLegacyShow(random)}, {}, "show"});
    findings += CountFindings({LegacyLog{zuna_test::RandomLegacyLog(random)}, {}, "log"});
  }
  EXPECT_GT(findings, 10000U);
}

}  // namespace
}  // namespace zuna_toolkit
