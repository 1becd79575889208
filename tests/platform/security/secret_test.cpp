// Wiping, and comparing in constant time.

#include "platform/security/secret.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>

#include "tests/support/bytes.h"

namespace {

using zuna_security::EqualInConstantTime;
using zuna_test::ByteVector;

TEST(Secret, WipesWhenItGoes) {
  alignas(zuna_security::Secret<32>) std::uint8_t memory[sizeof(zuna_security::Secret<32>)];
  auto* const secret = new (memory) zuna_security::Secret<32>;
  for (std::uint8_t& byte : secret->bytes()) byte = 0xAA;
  EXPECT_EQ(memory[31], 0xAA);
  std::destroy_at(secret);
  for (const std::uint8_t byte : memory) EXPECT_EQ(byte, 0);
}

TEST(Secret, WipesNothingOfNothing) { zuna_security::Wipe({}); }

TEST(Secret, EqualInConstantTimeSeesEveryBit) {
  const ByteVector secret(32, 0x5A);
  EXPECT_TRUE(EqualInConstantTime(secret, ByteVector(32, 0x5A)));
  EXPECT_FALSE(EqualInConstantTime(secret, ByteVector(31, 0x5A)));
  for (unsigned bit = 0; bit < 32 * 8; ++bit) {
    ByteVector other = secret;
    other[bit / 8] = static_cast<std::uint8_t>(other[bit / 8] ^ (1U << bit % 8));
    EXPECT_FALSE(EqualInConstantTime(secret, other));
  }
}

}  // namespace
