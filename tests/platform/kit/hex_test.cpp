// Bytes from hexadecimal digits and back.

#include "kit/hex.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>

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

TEST(EncodeHex, WritesLowerCase) {
  const std::array<std::uint8_t, 3> bytes{0x00, 0xFF, 0x9A};
  EXPECT_EQ(kit::EncodeHex(bytes), "00ff9a");
  EXPECT_EQ(kit::EncodeHex({}), "");
}

}  // namespace
