// Floats as decimal text.

#include "platform/core/json/numbers.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace {

std::uint32_t Bits(float value) { return std::bit_cast<std::uint32_t>(value); }

TEST(FloatText, IsTheShortestThatReadsBack) {
  EXPECT_EQ(zuna_json::FloatText(0), "0");
  EXPECT_EQ(zuna_json::FloatText(-0.0F), "-0.0");
  EXPECT_EQ(zuna_json::FloatText(1), "1");
  EXPECT_EQ(zuna_json::FloatText(-1.5F), "-1.5");
  EXPECT_EQ(zuna_json::FloatText(0.1F), "0.1");
  EXPECT_EQ(zuna_json::FloatText(16777216), "16777216");
  EXPECT_EQ(zuna_json::FloatText(std::numeric_limits<float>::max()), "3.4028235e+38");
  EXPECT_EQ(zuna_json::FloatText(std::numeric_limits<float>::denorm_min()), "1e-45");
}

TEST(FloatText, EveryFloatComesBack) {
  std::mt19937 random(1);
  for (int i = 0; i < 300000; ++i) {
    const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
    if (!std::isfinite(value)) continue;
    const std::string text = zuna_json::FloatText(value);
    ASSERT_EQ(Bits(zuna_json::ParseFloat(text).value()), Bits(value)) << text;
  }
}

TEST(ParseFloat, RoundsOnceFromTheDecimalDigits) {
  // One more than halfway between 1 and the float behind it, by less than a double tells from halfway.
  EXPECT_EQ(Bits(zuna_json::ParseFloat("1.00000005960464477539062500000000001").value()), 0x3F800001U);
  EXPECT_EQ(Bits(zuna_json::ParseFloat("1.000000059604644775390625").value()), 0x3F800000U);
  EXPECT_EQ(Bits(zuna_json::ParseFloat("1.00000017881393432617187499999999999").value()), 0x3F800001U);
  EXPECT_EQ(Bits(zuna_json::ParseFloat("1.000000178813934326171875").value()), 0x3F800002U);
}

TEST(ParseFloat, TakesWhatJsonCallsANumber) {
  EXPECT_EQ(zuna_json::ParseFloat("25"), 25.0F);
  EXPECT_EQ(zuna_json::ParseFloat("1E2"), 100.0F);
  EXPECT_EQ(zuna_json::ParseFloat("18446744073709551616"), 18446744073709551616.0F);
  EXPECT_EQ(Bits(zuna_json::ParseFloat("-0").value()), 0x80000000U);
  EXPECT_EQ(zuna_json::ParseFloat("1e-400"), 0.0F);
  EXPECT_EQ(Bits(zuna_json::ParseFloat("1e-45").value()), 1U);
}

TEST(ParseFloat, RefusesWhatLiesBeyondTheFloats) {
  EXPECT_EQ(zuna_json::ParseFloat("3.4028235e38"), std::numeric_limits<float>::max());
  EXPECT_EQ(zuna_json::ParseFloat("3.4028235677e38"), std::numeric_limits<float>::max());
  EXPECT_EQ(zuna_json::ParseFloat("3.4028235678e38"), std::nullopt);
  EXPECT_EQ(zuna_json::ParseFloat("-1e39"), std::nullopt);
  EXPECT_EQ(zuna_json::ParseFloat("1e400"), std::nullopt);
}

}  // namespace
