// The explanations of losses are those of the losses that conversions report, and of no others.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "tests/support/code_tables.h"
#include "tests/toolkit/comparison/random_documents.h"
#include "toolkit/comparison/comparison.h"
#include "toolkit/conversion/conversion.h"
#include "toolkit/error.h"

namespace zuna_toolkit {
namespace {

/// Codes, and whether their losses do no harm.
using Codes = std::map<std::string, bool>;

/// Adds the codes of what a document loses on its way to the other side; none where it is refused.
void AddCodes(const Document& document, Codes& codes) {
  const auto add = [&](const Difference& difference) {
    const auto [known, is_new] = codes.emplace(CodeText(difference), IsHarmless(difference));
    EXPECT_EQ(known->second, IsHarmless(difference)) << known->first;
  };
  try {
    if (document.type().is_legacy()) {
      LossesOfUp(document, CurrentForm(document), add);
    } else {
      LossesOfDown(document, Down(document), add);
    }
  } catch (const Error&) {
    return;
  }
}

void AddRandomDocuments(Codes& codes) {
  std::mt19937 random(1);
  for (int round = 0; round < 400; ++round) {
    const bool wild = round % 2 == 0;
    AddCodes({zuna_test::ConvertibleShow(random, wild), {1, 2}, "show"}, codes);
    AddCodes({LegacyShow{zuna_test::OddLegacyShow(random)}, {}, "show"}, codes);
    AddCodes({zuna_test::RandomLog(random), {1, 2}, "log"}, codes);
  }
}

/// What no random document has, or few have: how random numbers are spread is the standard library's choice.
void AddOddDocuments(Codes& codes) {
  AddCodes({LegacyShow{{}, 1, 1, 1}, {}, "show"}, codes);
  zuna_midi::ShowData show;
  const auto song = std::make_shared<zuna_midi::SongData>("1", "Song", std::uint16_t{480}, 1920U);
  for (const std::uint16_t number : {std::uint16_t{1}, std::uint16_t{2}}) {
    const auto voice = std::make_shared<zuna_midi::VoiceTrack>();
    voice->track_number = number;
    voice->name = number == 1 ? "Drums" : "Drum Kit";
    voice->messages = {{0, {0x99, 36, 1}}};
    song->voice_data->AddTrack(voice);
  }
  song->timeline->tempos = {{0, 500000}};
  song->timeline->meters = {{0, 4, 4, 24, 8}};
  show.AddSongData(song);
  AddCodes({show, {1, 2}, "show"}, codes);
  CL::ChangeLog log;
  const auto song_log = std::make_shared<CL::SongLog>("1", "Song", std::uint16_t{480}, 1920U);
  song_log->caesuras->events.emplace_back(0U, "").second_word = 1;
  log.AddSongLog(song_log);
  AddCodes({log, {1, 2}, "log"}, codes);
  AddCodes({LegacyLog{version0::ChangeLogV0(log)}, {}, "log"}, codes);
}

std::set<std::string> ExplainedCodes() {
  std::set<std::string> codes;
  for (const Explanation& explanation : LossExplanations()) {
    EXPECT_TRUE(codes.insert(std::string(explanation.code)).second) << explanation.code;
    EXPECT_FALSE(explanation.meaning.empty() || explanation.cause.empty() || explanation.remedy.empty())
        << explanation.code;
  }
  return codes;
}

Codes AllCodes() {
  Codes codes;
  AddRandomDocuments(codes);
  AddOddDocuments(codes);
  return codes;
}

TEST(LossExplanations, AreThoseOfTheLossesOfConversions) {
  std::set<std::string> codes;
  for (const auto& [code, is_harmless] : AllCodes()) codes.insert(code);
  EXPECT_EQ(codes, ExplainedCodes());
}

TEST(LossExplanations, AreInTheDocumentation) {
  const Codes codes = AllCodes();
  std::vector<std::string> rows;
  for (const Explanation& explanation : LossExplanations()) {
    const std::string code(explanation.code);
    std::string row = "| `" + code + "` | " + (codes.at(code) ? "yes" : "no") + " | ";
    row.append(explanation.meaning).append(" | ").append(explanation.remedy).append(" |");
    rows.push_back(row);
  }
  EXPECT_EQ(rows, zuna_test::CodeRows("conversion.md"));
}

}  // namespace
}  // namespace zuna_toolkit
