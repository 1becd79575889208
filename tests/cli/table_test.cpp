#include "cli/terminal/table.h"

#include <gtest/gtest.h>

#include "cli/terminal/columns.h"

namespace zuna_cli {
namespace {

std::string Shown(Table table, const std::vector<Table::Row>& rows) {
  for (const Table::Row& row : rows) table.Fit(row);
  std::string text;
  for (const Table::Row& row : rows) text += table.Line(row);
  return text;
}

const std::string kLong(50, 'x');

TEST(Table, AlignsColumnsOfATerminal) {
  EXPECT_EQ(Shown(Table("<>"), {{"name", "n"},
                                {"\u65E5\u672C\u8A9E", "1"},
                                {"e\u0301", "2"},
                                {"\U0001F469\u200D\U0001F52C", "34"}}),
            "  name     n\n"
            "  \u65E5\u672C\u8A9E   1\n"
            "  e\u0301        2\n"
            "  \U0001F469\u200D\U0001F52C      34\n");
}

TEST(Table, CutsNothingWithoutAWidth) {
  EXPECT_EQ(Shown(Table("<>"), {{"a", "1"}, {kLong, "2"}}), "  a  1\n  " + kLong + "  2\n");
}

TEST(Table, IsAsWideAsItsTextsWhereTheyFit) {
  EXPECT_EQ(Shown(Table("<>", 80), {{"a", "1"}, {"bc", "2"}}), "  a   1\n  bc  2\n");
}

TEST(Table, CutsItsLongestTextsToAWidth) {
  EXPECT_EQ(Shown(Table("<<>", 26), {{"7", "A name that is too long", "123"}, {"12a", "Short", "4"}}),
            "  7    A name that i\u2026  123\n"
            "  12a  Short             4\n");
}

TEST(Table, SharesTheRoomBetweenLongTexts) {
  const std::string line = Shown(Table("<<", 30), {{kLong, kLong}});
  EXPECT_EQ(line, "  xxxxxxxxxxxx\u2026  xxxxxxxxxxxx\u2026\n");
}

TEST(Table, GivesALongTextTheRoomThatIsLeft) {
  const std::string text = Shown(Table("<>", 50), {{kLong, "1"}, {"b", "2"}});
  EXPECT_EQ(text.substr(0, text.find('\n')), "  " + std::string(44, 'x') + "\u2026  1");
  EXPECT_EQ(Columns(text.substr(0, text.find('\n'))), 50U);
}

TEST(Table, CutsNoNumbersAndLeavesEightColumnsOfATextOnANarrowTerminal) {
  EXPECT_EQ(Shown(Table("<>", 5), {{"Long name", "123456"}}), "  Long na\u2026  123456\n");
}

TEST(Table, CutsBetweenCharacters) {
  EXPECT_EQ(Shown(Table("<>", 13), {{"\u65E5\u672C\u8A9E\u65E5\u672C", "1"}}),
            "  \u65E5\u672C\u8A9E\u2026   1\n");
}

}  // namespace
}  // namespace zuna_cli
