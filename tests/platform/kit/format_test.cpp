// printf formats into strings.

#include "kit/format.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/support/bytes.h"

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

TEST(Format, SaysThatAFormatCannotBePrinted) {
  // In the "C" locale, in which every program begins, no multibyte text stands for this character.
  EXPECT_EQ(zuna_test::MessageOf<std::invalid_argument>([] { kit::format("%ls", L"\U0010FFFF"); }),
            "kit::format: the format cannot be printed");
}

}  // namespace
