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

TEST(Text, KeepsSequencesOfCharacters) {
  for (const char* text : {
           "\U0001F469\u200D\U0001F3A4",                                  // woman singer
           "\U0001F469\U0001F3FD\u200D\U0001F3A4!",                       // with a skin colour
           "\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466",  // family
           "\u2764\uFE0F\u200D\U0001F525",                                // heart on fire
           "\U0001F3F3\uFE0F\u200D\U0001F308",                            // rainbow flag
           "\u266A\uFE0E \u2139\uFE0F \u2194\uFE0F",                      // as text, coloured
           "1\uFE0F\u20E3 #\uFE0F\u20E3",                                 // keycaps
           "\u845B\U000E0100",                                            // an ideograph in another form
           "\u0915\u094D\u200D\u0937",                                    // a half form of Devanagari
       }) {
    EXPECT_EQ(Printable(text), text);
  }
}

TEST(Text, HasNoJoinersAndSelectorsThatOnlyHide) {
  EXPECT_EQ(Printable("a\u200Db"), "a\\u200db");
  EXPECT_EQ(Printable("\u200D\U0001F3A4"), "\\u200d\U0001F3A4");
  EXPECT_EQ(Printable("\U0001F469\u200D"), "\U0001F469\\u200d");
  EXPECT_EQ(Printable("\U0001F469\u200Da"), "\U0001F469\\u200da");
  EXPECT_EQ(Printable("\U0001F469\u200D\u200D\U0001F3A4"), "\U0001F469\\u200d\\u200d\U0001F3A4");
  EXPECT_EQ(Printable("\u0915\u200D\u0937"), "\u0915\\u200d\u0937");
  EXPECT_EQ(Printable("\u0915\u094D\u200D"), "\u0915\u094D\\u200d");
  EXPECT_EQ(Printable("\uFE0Fa\uFE0F"), "\\ufe0fa\\ufe0f");
  EXPECT_EQ(Printable("\u00E9\uFE00"), "\u00E9\\ufe00");
  EXPECT_EQ(Printable("\u2764\uFE0F\uFE0F"), "\u2764\uFE0F\\ufe0f");
  EXPECT_EQ(Printable("a\U000E0100"), "a\\U000e0100");
  EXPECT_EQ(Printable("\U0001F469\u202E\u200D\U0001F3A4"), "\U0001F469\\u202e\\u200d\U0001F3A4");
}

TEST(Text, KeepsWhatIsShown) {
  for (const char* text : {"Caf\u00E9", "\u00A0", "\u2603 \u266D", "\u05D0\u0628", "e\u0301", "\U0001F3B5"}) {
    EXPECT_EQ(Printable(text), text);
    EXPECT_EQ(JsonString(text), '"' + std::string(text) + '"');
  }
}

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

TEST(Text, ComesBackOutOfAJsonString) {
  for (const std::string text :
       {"", "a\"b\\c/", "\n\x1F", "\u202E\u2028\u200B", "\U000E0041x", "Caf\u00E9"}) {
    EXPECT_EQ(TextOfJson(JsonString(text) + ", \"more\""), text);
  }
  for (const char* broken : {"", "\"", "\"\\", "\"\\u00", "null", "\"\\udb40\"", "\"\\uzzzz"})
    TextOfJson(broken);
}

}  // namespace
}  // namespace zuna_cli
