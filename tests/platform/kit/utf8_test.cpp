// Well-formed and ill-formed UTF-8, and where it is cut.

#include "kit/utf8.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using kit::CodePoint;
using kit::CutUtf8;
using kit::IsControl;
using kit::IsInvisible;
using kit::IsUtf8;
using kit::Utf8Length;

const char* const kIllFormed[] = {
    "\x80",              // a continuation byte alone
    "\xC0\x80",          // overlong, two bytes
    "\xC1\xBF",          // overlong, two bytes
    "\xC3",              // ends after the lead
    "\xC3\x28",          // no continuation byte
    "\xE0\x9F\xBF",      // overlong, three bytes
    "\xED\xA0\x80",      // U+D800, a surrogate
    "\xE2\x82",          // ends inside
    "\xE2\x28\xAC",      // second byte
    "\xE2\x82\x28",      // third byte
    "\xF0\x8F\xBF\xBF",  // overlong, four bytes
    "\xF4\x90\x80\x80",  // U+110000
    "\xF0\x9D\x84",      // ends inside
    "\xF0\x9D\x84\x28",  // fourth byte
    "\xF5\x80\x80\x80",  // no such lead
    "\xFF",              // no such lead
};

TEST(Utf8Length, WellFormed) {
  EXPECT_EQ(Utf8Length("a"), 1U);
  EXPECT_EQ(Utf8Length(std::string("\0", 1)), 1U);
  EXPECT_EQ(Utf8Length("\xC2\x80!"), 2U);
  EXPECT_EQ(Utf8Length("\xDF\xBF"), 2U);
  EXPECT_EQ(Utf8Length("\xE0\xA0\x80"), 3U);
  EXPECT_EQ(Utf8Length("\xED\x9F\xBF"), 3U);      // U+D7FF, the last before the surrogates
  EXPECT_EQ(Utf8Length("\xEE\x80\x80"), 3U);      // U+E000, the first after them
  EXPECT_EQ(Utf8Length("\xF0\x90\x80\x80"), 4U);  // U+10000
  EXPECT_EQ(Utf8Length("\xF4\x8F\xBF\xBF"), 4U);  // U+10FFFF, the last of all
}

TEST(Utf8Length, IllFormed) {
  EXPECT_EQ(Utf8Length(""), 0U);
  for (const char* const text : kIllFormed) EXPECT_EQ(Utf8Length(text), 0U) << testing::PrintToString(text);
}

TEST(IsUtf8, LooksAtAllOfTheText) {
  EXPECT_TRUE(IsUtf8(""));
  EXPECT_TRUE(IsUtf8("a\xC3\xA9\xE2\x82\xAC\xF0\x9D\x84\x9E"));
  for (const char* const text : kIllFormed) {
    EXPECT_FALSE(IsUtf8(std::string("abc") + text)) << testing::PrintToString(text);
  }
}

TEST(CutUtf8, KeepsWholeCharacters) {
  EXPECT_EQ(CutUtf8("abc", 3), "abc");
  EXPECT_EQ(CutUtf8("abcd", 3), "abc");
  EXPECT_EQ(CutUtf8("ab\xE2\x82\xAC", 4), "ab");
  EXPECT_EQ(CutUtf8("ab\xE2\x82\xAC", 5), "ab\xE2\x82\xAC");
  EXPECT_EQ(CutUtf8("\xF0\x9D\x84\x9E", 3), "");
}

TEST(CutUtf8, CutsWhatIsNotUtf8BetweenBytes) {
  EXPECT_EQ(CutUtf8("\xFF"
                    "b\xE2\x82\xAC",
                    4),
            "\xFF"
            "b\xE2\x82");
}

TEST(CodePoint, OfEveryLength) {
  EXPECT_EQ(CodePoint("a"), U'a');
  EXPECT_EQ(CodePoint("\xC2\x80"), char32_t{0x80});
  EXPECT_EQ(CodePoint("\xDF\xBF"), char32_t{0x7FF});
  EXPECT_EQ(CodePoint("\xE2\x80\xAE"), char32_t{0x202E});
  EXPECT_EQ(CodePoint("\xF4\x8F\xBF\xBF"), char32_t{0x10FFFF});
}

TEST(Characters, ThatMoveTheCursorOrTheTextAroundThem) {
  for (const char32_t character : {0x00U, 0x1FU, 0x7FU, 0x80U, 0x85U, 0x9FU, 0x61CU, 0x200EU, 0x200FU,
                                   0x2028U, 0x2029U, 0x202AU, 0x202EU, 0x2066U, 0x2069U}) {
    EXPECT_TRUE(IsControl(character)) << std::hex << static_cast<unsigned>(character);
  }
  for (const char32_t character :
       {0x20U, 0x7EU, 0xA0U, 0xE9U, 0x5D0U, 0x628U, 0x2027U, 0x202FU, 0x2065U, 0x206AU, 0x1F3B5U}) {
    EXPECT_FALSE(IsControl(character)) << std::hex << static_cast<unsigned>(character);
  }
}

TEST(Characters, ThatAreNotSeen) {
  for (const char32_t character : {0xADU, 0x180EU, 0x200BU, 0x200CU, 0x200DU, 0x2060U, 0x2064U, 0x206AU,
                                   0xFEFFU, 0xFFF9U, 0x1D173U, 0xE0001U, 0xE0041U}) {
    EXPECT_TRUE(IsInvisible(character)) << std::hex << static_cast<unsigned>(character);
  }
  for (const char32_t character :
       {0x20U, 0x2DU, 0xE9U, 0x301U, 0x200AU, 0x2010U, 0xFE0FU, 0xFFFDU, 0x1D172U, 0x1F3B5U}) {
    EXPECT_FALSE(IsInvisible(character)) << std::hex << static_cast<unsigned>(character);
  }
}

}  // namespace
