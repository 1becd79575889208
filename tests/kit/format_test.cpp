#include "kit/format.h"

#include <gtest/gtest.h>

namespace {

TEST(Format, PrintsLikePrintf) {
  EXPECT_EQ(kit::format("Expected %#x, found %#x before %u", 0x46, 0x47, 12U),
            "Expected 0x46, found 0x47 before 12");
  EXPECT_EQ(kit::format("%#x", 0), "0");
}

TEST(Format, HasNoLengthLimit) {
  const std::string text(100'000, 'x');
  EXPECT_EQ(kit::format("<%s>", text.c_str()), "<" + text + ">");
}

}  // namespace
