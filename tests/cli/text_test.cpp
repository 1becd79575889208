#include "cli/terminal/text.h"

#include <gtest/gtest.h>

namespace zuna_cli {
namespace {

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
