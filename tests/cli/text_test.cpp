#include "cli/terminal/text.h"

#include <gtest/gtest.h>

namespace zuna_cli {
namespace {

TEST(Text, IsPrintableOnATerminal) {
  EXPECT_EQ(Printable("Caf\xC3\xA9 \"x\\"), "Caf\xC3\xA9 \"x\\");
  EXPECT_EQ(Printable(std::string("\x00\n\x1B[m\x7F", 6)), "\\x00\\x0a\\x1b[m\\x7f");
  EXPECT_EQ(Printable("a\xE2\x82"), "a\\xe2\\x82");
}

TEST(Text, HasNothingThatSteersATerminal) {
  EXPECT_EQ(Printable("\u009B31m\u0085"), "\\u009b31m\\u0085");  // C1: control sequence introducer, next line
  EXPECT_EQ(Printable("a\u202Efdp.\u202C"), "a\\u202efdp.\\u202c");  // right-to-left override
  EXPECT_EQ(Printable("\u2066\u2069\u061C\u200E\u200F"), "\\u2066\\u2069\\u061c\\u200e\\u200f");
  EXPECT_EQ(Printable("a\u2028b\u2029"), "a\\u2028b\\u2029");  // line and paragraph separator
}

TEST(Text, HasNothingThatCannotBeSeen) {
  EXPECT_EQ(Printable("a\u200B\u200C\u200D\u2060\uFEFF\u00AD"),
            "a\\u200b\\u200c\\u200d\\u2060\\ufeff\\u00ad");
  EXPECT_EQ(Printable("\U000E0041"), "\\U000e0041");  // tag
}

TEST(Text, KeepsWhatIsShown) {
  for (const char* text : {"Caf\u00E9", "\u00A0", "\u2603 \u266D", "\u05D0\u0628", "e\u0301", "\U0001F3B5"}) {
    EXPECT_EQ(Printable(text), text);
    EXPECT_EQ(JsonString(text), '"' + std::string(text) + '"');
  }
}

TEST(Text, EndsWithACode) { EXPECT_EQ(WithCode("a [b]", "wrong-key"), "a [b] [wrong-key]"); }

TEST(Text, IsAJsonString) {
  EXPECT_EQ(JsonString(""), "\"\"");
  EXPECT_EQ(JsonString("a\"b\\c/"), "\"a\\\"b\\\\c/\"");
  EXPECT_EQ(JsonString(std::string("\x00\n\x1F", 3)), "\"\\u0000\\u000a\\u001f\"");
  EXPECT_EQ(JsonString("\xC3\xA9\xFF"
                       "f"),
            "\"\xC3\xA9\xEF\xBF\xBD"
            "f\"");
  EXPECT_EQ(JsonString("\x7F\u0080\u009F"), "\"\\u007f\\u0080\\u009f\"");
  EXPECT_EQ(JsonString("\u202E\u2028\u200B"), "\"\\u202e\\u2028\\u200b\"");
  EXPECT_EQ(JsonString("\U000E0041"), "\"\\udb40\\udc41\"");
}

}  // namespace
}  // namespace zuna_cli
