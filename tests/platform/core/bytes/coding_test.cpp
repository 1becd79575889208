// Numbers and checksums of binary files.

#include "platform/core/bytes/coding.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

std::string Varint(std::uint64_t value) {
  char bytes[8];
  return std::string(bytes, zuna_core::PutVarint(bytes, value));
}

TEST(Varint, HasKnownBytes) {
  EXPECT_EQ(Varint(0), std::string(1, '\0'));
  EXPECT_EQ(Varint(0x7F), "\x7F");
  EXPECT_EQ(Varint(0x80), "\x80\x01");
  EXPECT_EQ(Varint(300), "\xAC\x02");
  EXPECT_EQ(Varint(0x3FFF), "\xFF\x7F");
  EXPECT_EQ(Varint(0x4000), "\x80\x80\x01");
  EXPECT_EQ(Varint(0xFFFFFFFF), "\xFF\xFF\xFF\xFF\x0F");
  EXPECT_EQ(Varint(0x1FFFFFFFF), "\xFF\xFF\xFF\xFF\x1F");
  EXPECT_EQ(Varint(0x7FFFFFFFF), "\xFF\xFF\xFF\xFF\x7F");
}

TEST(Varint, ComesBackAndHasTheSizeThatWasFoundOut) {
  for (int bit = 0; bit < 35; ++bit) {
    for (const int around : {-1, 0, 1}) {
      const std::uint64_t value = (std::uint64_t{1} << bit) + static_cast<std::uint64_t>(around);
      const std::string bytes = Varint(value);
      EXPECT_EQ(bytes.size(), zuna_core::VarintSize(value));
      const char* from = bytes.data();
      std::uint64_t read = 0;
      EXPECT_TRUE(zuna_core::GetVarint(from, bytes.data() + bytes.size(), read));
      EXPECT_EQ(read, value);
      EXPECT_EQ(from, bytes.data() + bytes.size());
    }
  }
}

TEST(Varint, RefusesWhatIsCutOffOrLongerThanNeeded) {
  for (const std::string& bytes :
       {std::string(), std::string("\x80"), std::string("\xFF\xFF\xFF\xFF"), std::string("\x80\x00", 2),
        std::string("\xFF\x80\x00", 3), std::string("\x80\x80\x80\x80\x80\x01"), std::string(20, '\xFF')}) {
    const char* from = bytes.data();
    std::uint64_t value = 0;
    EXPECT_FALSE(zuna_core::GetVarint(from, bytes.data() + bytes.size(), value));
    EXPECT_EQ(from, bytes.data());
  }
}

TEST(ZigZag, AlternatesBetweenTheSigns) {
  EXPECT_EQ(zuna_core::ZigZag(0), 0U);
  EXPECT_EQ(zuna_core::ZigZag(-1), 1U);
  EXPECT_EQ(zuna_core::ZigZag(1), 2U);
  EXPECT_EQ(zuna_core::ZigZag(-32768), 65535U);
  for (std::int32_t value = -32768; value <= 32767; ++value) {
    ASSERT_EQ(zuna_core::UnZigZag(zuna_core::ZigZag(value)), value);
  }
}

TEST(Fixed, LowestByteComesFirst) {
  char bytes[8];
  EXPECT_EQ(std::string(bytes, zuna_core::PutFixed(bytes, 0x11223344, 4)), "\x44\x33\x22\x11");
  EXPECT_EQ(zuna_core::GetFixed("\x44\x33\x22\x11", 4), 0x11223344U);
  EXPECT_EQ(zuna_core::GetFixed("\xFF\xFE", 2), 0xFEFFU);
}

TEST(Crc32, HasItsCheckValue) {
  EXPECT_EQ(zuna_core::Crc32(0, "123456789"), 0xCBF43926U);
  EXPECT_EQ(zuna_core::Crc32(zuna_core::Crc32(0, "1234"), "56789"), 0xCBF43926U);
}

}  // namespace
