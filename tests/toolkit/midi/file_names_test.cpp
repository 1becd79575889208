#include "toolkit/midi/file_names.h"

#include <gtest/gtest.h>

namespace zuna_toolkit::midi {
namespace {

TEST(FileNames, AreCleanAndShort) {
  FileNames names;
  EXPECT_EQ(names.Make("1", "Moon River"), "1 Moon River.mid");
  EXPECT_EQ(names.Make("..", "/etc"), "_. _etc.mid");
  EXPECT_EQ(names.Make("", ""), "song.mid");
  EXPECT_EQ(names.Make("2", std::string("a\0\n\x7F\\:b\xFF", 8)), "2 a_____b_.mid");
  EXPECT_EQ(names.Make("4", "Who? *\"Me\"* <1|2>"), "4 Who_ __Me__ _1_2_.mid");
  EXPECT_LE(names.Make("3", std::string(5000, 'x')).size(), 255U);
  EXPECT_LE(names.Make("3", std::string(5000, 'x')).size(), 255U);
}

TEST(FileNames, CannotSteerATerminalOrPassForAnOption) {
  FileNames names;
  EXPECT_EQ(names.Make("-rf", "x"), "_rf x.mid");
  EXPECT_EQ(names.Make("", "--help"), "_-help.mid");
  EXPECT_EQ(names.Make(" ", "- x"), "_ x.mid");
  EXPECT_EQ(names.Make("", ".bashrc"), "_bashrc.mid");
  EXPECT_EQ(names.Make("1", "a\u009B31m\u0085b"), "1 a_31m_b.mid");
  EXPECT_EQ(names.Make("2", "a\u202Edim.\u2066b\u2069\u200F\u061C"), "2 a_dim._b___.mid");
  EXPECT_EQ(names.Make("3", "a\u2028b\u2029"), "3 a_b_.mid");
}

TEST(FileNames, AreNoDevicesOfWindows) {
  FileNames names;
  for (const char* name : {"CON", "prn", "Aux", "NUL", "COM1", "com9", "LPT1", "lpt5"}) {
    EXPECT_EQ(names.Make("", name), std::string("_") + name + ".mid");
    EXPECT_EQ(names.Make(name, ""), std::string("_") + name + " (2).mid");
  }
  EXPECT_EQ(names.Make("nul.1", "Song"), "_nul.1 Song.mid");
  EXPECT_EQ(names.Make("con", ".x"), "_con .x.mid");
  for (const char* name : {"CONE", "COM", "COM0", "COM10", "LPTX", "CO", "NULL", "xcon"}) {
    EXPECT_EQ(names.Make("", name), std::string(name) + ".mid");
  }
  EXPECT_EQ(names.Make("CON", "Song"), "CON Song.mid");
}

TEST(FileNames, OfOrdinarySongsAreTheirNumbersAndNames) {
  FileNames names;
  EXPECT_EQ(names.Make("12a", "Caf\u00E9 \u2013 No. 2 (reprise)"),
            "12a Caf\u00E9 \u2013 No. 2 (reprise).mid");
  EXPECT_EQ(names.Make("7", "-"), "7 -.mid");
  EXPECT_EQ(names.Make("8", "\u05D0\u0628\u200D"), "8 \u05D0\u0628\u200D.mid");
}

TEST(FileNames, AreNeverTwoAlike) {
  FileNames names;
  EXPECT_EQ(names.Make("1", "a/b"), "1 a_b.mid");
  EXPECT_EQ(names.Make("1", "A:B"), "1 A_B (2).mid");
  EXPECT_EQ(names.Make("1", "a_b"), "1 a_b (3).mid");
  EXPECT_EQ(names.Make("1", "a_b (2)"), "1 a_b (2) (2).mid");
}

TEST(FileNames, TakeManyOfOneBeginning) {
  FileNames names;
  std::string last;
  for (int song = 0; song < 32000; ++song)
    last = names.Make(std::string(200, 'x') + std::to_string(song), "");
  EXPECT_EQ(last, std::string(200, 'x') + " (32000).mid");
}

}  // namespace
}  // namespace zuna_toolkit::midi
