// Twofish in SIV mode against its parts.

#include "platform/security/crypto.h"

#include <gcrypt.h>
#include <gtest/gtest.h>

#include <numeric>
#include <random>

#include "tests/support/bytes.h"

namespace {

using zuna_security::Bytes;
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

// SIV put together from CMAC and CTR, as RFC 5297 describes it, to compare with.

ByteVector Cmac(Bytes key, const ByteVector& message) {
  gcry_mac_hd_t handle = nullptr;
  EXPECT_EQ(gcry_mac_open(&handle, GCRY_MAC_CMAC_TWOFISH, 0, nullptr), 0U);
  EXPECT_EQ(gcry_mac_setkey(handle, key.data(), key.size()), 0U);
  EXPECT_EQ(gcry_mac_write(handle, message.data(), message.size()), 0U);
  ByteVector mac(16);
  std::size_t size = mac.size();
  EXPECT_EQ(gcry_mac_read(handle, mac.data(), &size), 0U);
  gcry_mac_close(handle);
  return mac;
}

ByteVector Doubled(const ByteVector& block) {
  ByteVector doubled(16);
  for (std::size_t i = 0; i < 16; ++i) {
    doubled[i] = static_cast<std::uint8_t>(block[i] << 1 | (i < 15 ? block[i + 1] >> 7 : 0));
  }
  if (block[0] >= 0x80) doubled[15] ^= 0x87;
  return doubled;
}

void XorAt(ByteVector& into, std::size_t offset, const ByteVector& bytes) {
  for (std::size_t i = 0; i < bytes.size(); ++i)
    into[offset + i] = static_cast<std::uint8_t>(into[offset + i] ^ bytes[i]);
}

ByteVector S2v(Bytes key, const ByteVector& associated, const ByteVector& plaintext) {  // RFC 5297, 2.4
  ByteVector d = Doubled(Cmac(key, ByteVector(16)));
  XorAt(d, 0, Cmac(key, associated));
  if (plaintext.size() >= 16) {
    ByteVector t = plaintext;
    XorAt(t, t.size() - 16, d);
    return Cmac(key, t);
  }
  ByteVector padded = plaintext;
  padded.push_back(0x80);
  padded.resize(16);
  XorAt(padded, 0, Doubled(d));
  return Cmac(key, padded);
}

ByteVector Ctr(Bytes key, ByteVector counter, ByteVector text) {  // RFC 5297, 2.5
  counter[8] &= 0x7F;
  counter[12] &= 0x7F;
  gcry_cipher_hd_t handle = nullptr;
  EXPECT_EQ(gcry_cipher_open(&handle, GCRY_CIPHER_TWOFISH, GCRY_CIPHER_MODE_CTR, 0), 0U);
  EXPECT_EQ(gcry_cipher_setkey(handle, key.data(), key.size()), 0U);
  EXPECT_EQ(gcry_cipher_setctr(handle, counter.data(), counter.size()), 0U);
  if (!text.empty()) {
    EXPECT_EQ(gcry_cipher_encrypt(handle, text.data(), text.size(), nullptr, 0), 0U);
  }
  gcry_cipher_close(handle);
  return text;
}

ByteVector Random(std::mt19937& random, std::size_t size) {
  ByteVector bytes(size);
  for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
  return bytes;
}

TEST(Siv, IsCmacAndCtrPutTogether) {
  std::mt19937 random(1);
  for (std::size_t size = 0; size < 100; ++size) {
    const ByteVector key = Random(random, 64);
    const ByteVector associated = Random(random, 1 + size);
    const ByteVector plaintext = Random(random, size);
    const ByteVector tag = S2v(Bytes(key).first(32), associated, plaintext);
    const ByteVector ciphertext = Ctr(Bytes(key).last(32), tag, plaintext);

    ByteVector made(size);
    ByteVector made_tag(16);
    const auto siv_key = zuna_security::SivKey(key);
    zuna_security::SivEncrypt(siv_key, associated, plaintext, made, std::span<std::uint8_t, 16>(made_tag));
    EXPECT_EQ(made, ciphertext);
    EXPECT_EQ(made_tag, tag);
    EXPECT_TRUE(zuna_security::SivDecrypt(siv_key, associated, std::span<const std::uint8_t, 16>(tag),
                                          ciphertext, made));
    EXPECT_EQ(made, plaintext);
  }
}

TEST(Siv, WorksInPlace) {
  std::mt19937 random(2);
  for (const std::size_t size : {0U, 1U, 15U, 16U, 17U, 100000U}) {
    const ByteVector key = Random(random, 64);
    const ByteVector plaintext = Random(random, size);
    ByteVector text = plaintext;
    ByteVector tag(16);
    zuna_security::SivEncrypt(zuna_security::SivKey(key), key, text, text, std::span<std::uint8_t, 16>(tag));
    if (size > 15) {
      EXPECT_NE(text, plaintext);
    }
    EXPECT_TRUE(zuna_security::SivDecrypt(zuna_security::SivKey(key), key,
                                          std::span<const std::uint8_t, 16>(tag), text, text));
    EXPECT_EQ(text, plaintext);
  }
}

TEST(Siv, RefusesEveryForgedTagAndReleasesNothing) {
  const ByteVector key(64, 3);
  for (const std::size_t size : {0U, 5U, 40U}) {
    const ByteVector plaintext(size, 0x41);
    ByteVector ciphertext(size);
    ByteVector tag(16);
    zuna_security::SivEncrypt(zuna_security::SivKey(key), {}, plaintext, ciphertext,
                              std::span<std::uint8_t, 16>(tag));
    for (unsigned bit = 0; bit < 128; ++bit) {
      ByteVector forged = tag;
      forged[bit / 8] = static_cast<std::uint8_t>(forged[bit / 8] ^ (1U << bit % 8));
      ByteVector out(size, 0x55);
      EXPECT_FALSE(zuna_security::SivDecrypt(zuna_security::SivKey(key), {},
                                             std::span<const std::uint8_t, 16>(forged), ciphertext, out));
      EXPECT_EQ(out, ByteVector(size));
    }
  }
}

}  // namespace
