// Twofish in CTR and SIV mode against their parts.

#include "platform/security/crypto.h"

#include <gcrypt.h>
#include <gtest/gtest.h>

#include <random>

#include "tests/platform/security/sealed.h"
#include "tests/support/bytes.h"

namespace {

using zuna_test::ByteVector;
using zuna_test::FromHex;

ByteVector TwofishOfZeros(int algorithm, std::size_t key_size) {
  gcry_cipher_hd_t handle = nullptr;
  EXPECT_EQ(gcry_cipher_open(&handle, algorithm, GCRY_CIPHER_MODE_ECB, 0), 0U);
  const ByteVector key(key_size);
  EXPECT_EQ(gcry_cipher_setkey(handle, key.data(), key.size()), 0U);
  ByteVector block(16);
  EXPECT_EQ(gcry_cipher_encrypt(handle, block.data(), block.size(), nullptr, 0), 0U);
  gcry_cipher_close(handle);
  return block;
}

TEST(Twofish, KnownAnswersOfZeros) {
  EXPECT_EQ(TwofishOfZeros(GCRY_CIPHER_TWOFISH128, 16), FromHex("9F589F5CF6122C32B6BFEC2F2AE8C35A"));
  EXPECT_EQ(TwofishOfZeros(GCRY_CIPHER_TWOFISH, 32), FromHex("57FF739D4DC92C1BD7FC01700CC8216F"));
}

ByteVector Random(std::mt19937& random, std::size_t size) {
  ByteVector bytes(size);
  for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
  return bytes;
}

using KeySpan = std::span<const std::uint8_t, 32>;
using BlockSpan = std::span<const std::uint8_t, 16>;

/// CTR mode from single blocks: the counter is one number of 128 bits, highest byte first.
ByteVector CtrByBlocks(const ByteVector& key, ByteVector counter, ByteVector text) {
  gcry_cipher_hd_t handle = nullptr;
  EXPECT_EQ(gcry_cipher_open(&handle, GCRY_CIPHER_TWOFISH, GCRY_CIPHER_MODE_ECB, 0), 0U);
  EXPECT_EQ(gcry_cipher_setkey(handle, key.data(), key.size()), 0U);
  ByteVector block(16);
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (i % 16 == 0) {
      EXPECT_EQ(gcry_cipher_encrypt(handle, block.data(), 16, counter.data(), 16), 0U);
      for (std::size_t digit = 16; digit > 0 && ++counter[digit - 1] == 0; --digit) {
      }
    }
    text[i] = static_cast<std::uint8_t>(text[i] ^ block[i % 16]);
  }
  gcry_cipher_close(handle);
  return text;
}

TEST(TwofishCtr, CountsInOneNumberOf128Bits) {
  std::mt19937 random(3);
  const ByteVector key = Random(random, 32);
  for (const char* counter : {
           "00000000000000000000000000000000",
           "000000000000000000000000FFFFFFFE",  // passes 2^32
           "0000000000000000FFFFFFFFFFFFFFF0",  // passes 2^64
           "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFD",  // wraps around
           "7FFFFFFFFFFFFFFFFFFFFFFFFFFFFF80",
       }) {
    for (const std::size_t size : {0U, 1U, 15U, 16U, 17U, 500U, 5000U}) {
      const ByteVector text = Random(random, size);
      const ByteVector first = FromHex(counter);
      ByteVector made(size);
      zuna_security::TwofishCtr(KeySpan(key), BlockSpan(first), text, made);
      EXPECT_EQ(made, CtrByBlocks(key, first, text)) << counter << ' ' << size;
      zuna_security::TwofishCtr(KeySpan(key), BlockSpan(first), made, made);
      EXPECT_EQ(made, text);
    }
  }
}

/// What SivByParts() gives, in its parts.
struct SivSealed {
  ByteVector tag;
  ByteVector ciphertext;
};

SivSealed SealSiv(const ByteVector& key, const ByteVector& associated, const ByteVector& plaintext) {
  const ByteVector sealed = zuna_test::SivByParts(key, associated, plaintext);
  return {{sealed.begin(), sealed.begin() + 16}, {sealed.begin() + 16, sealed.end()}};
}

bool DecryptSiv(const ByteVector& key, const ByteVector& associated, const ByteVector& tag,
                const ByteVector& ciphertext, ByteVector& plaintext) {
  return zuna_security::TwofishSivDecrypt(std::span<const std::uint8_t, 64>(key), associated, BlockSpan(tag),
                                          ciphertext, plaintext);
}

TEST(Siv, IsCmacAndCtrPutTogether) {
  std::mt19937 random(1);
  for (std::size_t size = 0; size < 100; ++size) {
    const ByteVector key = Random(random, 64);
    const ByteVector associated = Random(random, 1 + size);
    const ByteVector plaintext = Random(random, size);
    const SivSealed sealed = SealSiv(key, associated, plaintext);
    ByteVector opened(size);
    EXPECT_TRUE(DecryptSiv(key, associated, sealed.tag, sealed.ciphertext, opened));
    EXPECT_EQ(opened, plaintext);
  }
}

TEST(Siv, WorksInPlace) {
  std::mt19937 random(2);
  for (const std::size_t size : {0U, 1U, 15U, 16U, 17U, 100000U}) {
    const ByteVector key = Random(random, 64);
    const ByteVector plaintext = Random(random, size);
    const SivSealed sealed = SealSiv(key, key, plaintext);
    ByteVector text = sealed.ciphertext;
    EXPECT_TRUE(DecryptSiv(key, key, sealed.tag, text, text));
    EXPECT_EQ(text, plaintext);
  }
}

}  // namespace
