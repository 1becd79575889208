#include "cli/base/text.h"

#include <gtest/gtest.h>

namespace zuna_cli {
namespace {

TEST(Text, MeasuresCharacters) {
  EXPECT_EQ(Utf8Length(""), 0U);
  EXPECT_EQ(Utf8Length("a"), 1U);
  EXPECT_EQ(Utf8Length("\xC3\xA9!"), 2U);
  EXPECT_EQ(Utf8Length("\xE2\x82\xAC"), 3U);
  EXPECT_EQ(Utf8Length("\xF0\x9D\x84\x9E"), 4U);
  EXPECT_EQ(Utf8Length("\xED\x9F\xBF"), 3U);      // U+D7FF, the last before the surrogates
  EXPECT_EQ(Utf8Length("\xF4\x8F\xBF\xBF"), 4U);  // U+10FFFF, the last of all
}

TEST(Text, RefusesWhatIsNoCharacter) {
  for (const char* text : {"\x80", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF",
                           "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "\xC3", "\xC3(", "\xE2\x82",
                           "\xE2\x82(", "\xF0\x9D\x84"}) {
    EXPECT_EQ(Utf8Length(text), 0U) << Printable(text);
  }
}

TEST(Text, IsPrintableOnATerminal) {
  EXPECT_EQ(Printable("Caf\xC3\xA9 \"x\\"), "Caf\xC3\xA9 \"x\\");
  EXPECT_EQ(Printable(std::string("\x00\n\x1B[m\x7F", 6)), "\\x00\\x0a\\x1b[m\\x7f");
  EXPECT_EQ(Printable("\xC2\x9B"
                      "31m"),
            "\\xc2\\x9b31m");  // C1: control sequence introducer
  EXPECT_EQ(Printable("a\xE2\x82"), "a\\xe2\\x82");
}

TEST(Text, IsAJsonString) {
  EXPECT_EQ(JsonString(""), "\"\"");
  EXPECT_EQ(JsonString("a\"b\\c/"), "\"a\\\"b\\\\c/\"");
  EXPECT_EQ(JsonString(std::string("\x00\n\x1F", 3)), "\"\\u0000\\u000a\\u001f\"");
  EXPECT_EQ(JsonString("\xC3\xA9\xFF"
                       "f"),
            "\"\xC3\xA9\xEF\xBF\xBD"
            "f\"");
}

}  // namespace
}  // namespace zuna_cli
