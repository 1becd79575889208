// Both forms of an identifier.

#include "kit/uuid.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

#include "kit/format.h"
#include "tests/support/bytes.h"

namespace {

constexpr kit::UUID::Bytes kBytes = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77,
                                     0x88, 0x99, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF};
constexpr const char* kText = "00112233-4455-6677-8899-aabbccddeeff";

TEST(Uuid, IsNewEachTime) {
  EXPECT_FALSE(kit::UUID() == kit::UUID());
  EXPECT_EQ(kit::UUID().bytes()[6] >> 4, 4);
  EXPECT_EQ(kit::UUID::Nil(), kit::UUID(kit::UUID::Bytes{}));
}

TEST(Uuid, BinaryFormIsItsSixteenBytes) {
  std::stringstream stream;
  kit::UUID(kBytes).WriteBinary(stream, true);
  EXPECT_EQ(stream.str(), std::string(kBytes.begin(), kBytes.end()));
  EXPECT_EQ(kit::UUID(stream, true), kit::UUID(kBytes));
}

TEST(Uuid, TextFormHasHyphens) {
  std::stringstream stream;
  kit::UUID(kBytes).WriteBinary(stream, false);
  EXPECT_EQ(stream.str(), kText);
  EXPECT_EQ(kit::UUID(stream, false), kit::UUID(kBytes));
}

TEST(Uuid, ShortReadSetsTheFailState) {
  std::istringstream stream("\x01\x02");
  EXPECT_EQ(kit::UUID(stream, true).bytes()[1], 2);
  EXPECT_TRUE(stream.fail());
}

TEST(Uuid, TextThatIsNoIdentifierIsRefused) {
  for (const char* text : {"", "00112233445566778899aabbccddeeff", "{00112233-4455-6677-8899-aabbccddeeff}",
                           "00112233-4455-6677-8899-aabbccddeefg", "00112233-4455-6677-8899-aabbccddeeff0"}) {
    EXPECT_EQ(zuna_test::MessageOf<std::invalid_argument>([&] { kit::UUID::FromString(text); }),
              kit::format("\"%s\" is not an identifier such as 00112233-4455-6677-8899-aabbccddeeff", text));
  }
  std::istringstream stream("00112233-4455-6677-8899-aabbccddeexx");
  EXPECT_EQ(kit::UUID(stream, false), kit::UUID::Nil());
  EXPECT_TRUE(stream.fail());
}

}  // namespace
