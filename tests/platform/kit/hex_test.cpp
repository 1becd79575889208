// Bytes from hexadecimal digits.

#include "kit/hex.h"

#include <gtest/gtest.h>

namespace {

using kit::DecodeHex;

TEST(DecodeHex, TakesDigitsOfEitherCase) {
  EXPECT_EQ(DecodeHex("00ff09AaBcDe"), std::string("\x00\xFF\x09\xAA\xBC\xDE", 6));
  EXPECT_EQ(DecodeHex(""), "");
}

TEST(DecodeHex, RefusesEverythingElse) {
  for (const char* const text :
       {"0", "000", "0g", "g0", " 00", "0x00", "00 00", "@0", "`0", "G0", "/0", ":0"}) {
    EXPECT_EQ(DecodeHex(text), std::nullopt) << text;
  }
}

}  // namespace
