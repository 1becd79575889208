// The codes of findings, and the page that lists them.
#include <gtest/gtest.h>

#include <set>
#include <sstream>

#include "tests/support/code_tables.h"
#include "toolkit/checking/checking.h"
#include "toolkit/comparison/comparison.h"

namespace zuna_toolkit {
namespace {

std::string RowOf(FindingCode code) {
  const Explanation& explanation = FindingExplanations()[static_cast<std::size_t>(code)];
  std::ostringstream row;
  row << "| `" << explanation.code << "` | " << (SeverityOf(code) == Severity::kError ? "error" : "warning")
      << " | " << explanation.meaning << " | " << explanation.remedy << " |";
  return row.str();
}

TEST(FindingExplanations, AreInTheDocumentation) {
  std::vector<std::string> rows;
  for (std::size_t code = 0; code < FindingExplanations().size(); ++code) {
    rows.push_back(RowOf(static_cast<FindingCode>(code)));
  }
  EXPECT_EQ(rows, zuna_test::CodeRows("checks.md"));
}

TEST(FindingExplanations, HaveEachCodeOnce) {
  std::set<std::string_view> codes;
  for (const Explanation& explanation : FindingExplanations()) {
    EXPECT_TRUE(codes.insert(explanation.code).second) << explanation.code;
    EXPECT_EQ(explanation.code.find_first_not_of("abcdefghijklmnopqrstuvwxyz-8"), std::string_view::npos);
    EXPECT_FALSE(explanation.meaning.empty() || explanation.cause.empty() || explanation.remedy.empty())
        << explanation.code;
  }
  EXPECT_EQ(CodeText(FindingCode::kTempoZero), "tempo-zero");
  EXPECT_EQ(CodeText(FindingCode::kTempoScale), "tempo-scale-not-positive");
}

TEST(FindingExplanations, ShareNoCodeWithLosses) {
  std::set<std::string_view> losses;
  for (const Explanation& explanation : LossExplanations()) losses.insert(explanation.code);
  for (const Explanation& explanation : FindingExplanations()) {
    EXPECT_FALSE(losses.contains(explanation.code)) << explanation.code;
  }
}

TEST(FindingExplanations, GiveTheRemedy) {
  const Document empty(zuna_midi::ShowData{}, {1, 2}, "show");
  Check(empty,
        [](const Finding& finding) { EXPECT_EQ(finding.remedy, "check that this is the right file"); });
}

}  // namespace
}  // namespace zuna_toolkit
