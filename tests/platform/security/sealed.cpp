// SIV put together from CMAC and CTR, by libgcrypt.

#include "tests/platform/security/sealed.h"

#include <gcrypt.h>
#include <gtest/gtest.h>

#include "platform/security/envelope.h"

namespace zuna_test {

namespace {

ByteVector Cmac(zuna_security::Bytes key, const ByteVector& message) {
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

ByteVector S2v(zuna_security::Bytes key, const ByteVector& associated,
               const ByteVector& plaintext) {  // RFC 5297, 2.4
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

}  // namespace

ByteVector Ctr(zuna_security::Bytes key, const ByteVector& counter, ByteVector text) {
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

ByteVector SivByParts(zuna_security::Bytes key, const ByteVector& associated, const ByteVector& plaintext) {
  ByteVector sealed = S2v(key.first(32), associated, plaintext);
  ByteVector counter = sealed;
  counter[8] &= 0x7F;  // RFC 5297, 2.5
  counter[12] &= 0x7F;
  const ByteVector ciphertext = Ctr(key.last(32), counter, plaintext);
  sealed.insert(sealed.end(), ciphertext.begin(), ciphertext.end());
  return sealed;
}

ByteVector Sealed(zuna_security::Suite suite, const std::string& plaintext, const CipherKey& key) {
  if (suite == zuna_security::kWrittenSuite) return Encrypted(plaintext, key);
  zuna_security::EnvelopeKeys keys;
  zuna_security::DeriveKeys({key.key, key.iv}, suite, keys);
  ByteVector envelope(zuna_security::kTagOffset);
  zuna_security::WriteAssociated(keys, plaintext.size(), envelope);
  const ByteVector sealed = SivByParts(keys.cipher.bytes(), envelope, FromText(plaintext));
  envelope.insert(envelope.end(), sealed.begin(), sealed.end());
  return envelope;
}

}  // namespace zuna_test
