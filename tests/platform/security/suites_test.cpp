// What every cipher suite keeps: forged tags are refused and release nothing, and suites share no keys.

#include "platform/security/suites.h"

#include <gtest/gtest.h>

#include "platform/security/envelope.h"
#include "tests/platform/security/sealed.h"

namespace {

using zuna_security::EnvelopeKeys;
using zuna_security::Suite;
using zuna_test::ByteVector;

const zuna_security::KeyAndIv kSecrets{zuna_test::kKey.key, zuna_test::kKey.iv};

class Suites : public testing::TestWithParam<Suite> {};

TEST_P(Suites, RefuseEveryForgedTagAndReleaseNothing) {
  EnvelopeKeys keys;
  DeriveKeys(kSecrets, GetParam(), keys);
  for (const std::size_t size : {0U, 5U, 40U}) {
    const ByteVector sealed = zuna_test::Sealed(GetParam(), std::string(size, 'A'));
    const zuna_security::Envelope good = zuna_security::ParseEnvelope(sealed, "e");
    for (unsigned bit = 0; bit < 128; ++bit) {
      ByteVector forged(good.tag.begin(), good.tag.end());
      forged[bit / 8] = static_cast<std::uint8_t>(forged[bit / 8] ^ (1U << bit % 8));
      ByteVector out(size, 0x55);
      EXPECT_FALSE(Decrypt(keys, good.associated, zuna_security::Tag(forged), good.ciphertext, out));
      EXPECT_EQ(out, ByteVector(size));
    }
  }
}

TEST_P(Suites, WorkInPlace) {
  EnvelopeKeys keys;
  DeriveKeys(kSecrets, GetParam(), keys);
  for (const std::size_t size : {0U, 1U, 15U, 16U, 17U, 100000U}) {
    ByteVector sealed = zuna_test::Sealed(GetParam(), std::string(size, 'A'));
    const zuna_security::Envelope envelope = zuna_security::ParseEnvelope(sealed, "e");
    const std::span<std::uint8_t> text = std::span(sealed).subspan(zuna_security::kEnvelopeHeaderSize);
    EXPECT_TRUE(Decrypt(keys, envelope.associated, envelope.tag.first<16>(), envelope.ciphertext, text));
    EXPECT_EQ(ByteVector(text.begin(), text.end()), ByteVector(size, 'A'));
  }
}

INSTANTIATE_TEST_SUITE_P(All, Suites, testing::ValuesIn(zuna_security::kSuites), zuna_test::SuiteName);

TEST(SuiteKeys, AreOfOneSuite) {
  EnvelopeKeys first, second;
  DeriveKeys(kSecrets, Suite::kCmac, first);
  DeriveKeys(kSecrets, Suite::kHmac, second);
  const auto differ = [](auto a, auto b) { return !zuna_security::EqualInConstantTime(a, b); };
  EXPECT_TRUE(differ(first.cipher.bytes().first(32), second.cipher.bytes().first(32)));
  EXPECT_TRUE(differ(first.cipher.bytes().last(32), second.cipher.bytes().last(32)));
  EXPECT_TRUE(differ(first.key_check.bytes(), second.key_check.bytes()));
}

}  // namespace
