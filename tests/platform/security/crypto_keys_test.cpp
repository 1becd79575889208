// HMAC and HKDF against the published cases, and the derived keys.

#include "platform/security/crypto.h"

#include <gtest/gtest.h>

#include <numeric>

#include "tests/platform/security/sealed.h"

namespace {

using zuna_security::Bytes;
using zuna_test::ByteVector;
using zuna_test::FromHex;
using zuna_test::FromText;

ByteVector Hmac(const ByteVector& key, std::initializer_list<Bytes> parts) {
  ByteVector mac(32);
  zuna_security::HmacSha256(key, parts, std::span<std::uint8_t, 32>(mac));
  return mac;
}

ByteVector Counting(std::uint8_t first, std::size_t count) {
  ByteVector bytes(count);
  std::iota(bytes.begin(), bytes.end(), first);
  return bytes;
}

struct HkdfCase {
  ByteVector key, salt, info, prk, okm;
};

void ExpectHkdf(const HkdfCase& expected) {
  ByteVector prk(32);
  zuna_security::HkdfExtract(expected.salt, expected.key, std::span<std::uint8_t, 32>(prk));
  EXPECT_EQ(prk, expected.prk);
  for (std::size_t split = 0; split <= expected.info.size(); ++split) {  // info may come in two parts
    ByteVector okm(expected.okm.size());
    const Bytes info = expected.info;
    zuna_security::HkdfExpand(prk, info.first(split), info.subspan(split), okm);
    EXPECT_EQ(okm, expected.okm);
  }
}

TEST(HmacSha256, KnownAnswers) {  // RFC 4231, test cases 1, 2 and 6
  EXPECT_EQ(Hmac(ByteVector(20, 0x0b), {FromText("Hi There")}),
            FromHex("b0344c61d8db38535ca8afceaf0bf12b881dc200c9833da726e9376c2e32cff7"));
  EXPECT_EQ(Hmac(FromText("Jefe"), {FromText("what do ya "), {}, FromText("want for nothing?")}),
            FromHex("5bdcc146bf60754e6a042426089575c75a003f089d2739839dec58b964ec3843"));
  EXPECT_EQ(Hmac(ByteVector(131, 0xaa), {FromText("Test Using Larger Than Block-Size Key - Hash Key First")}),
            FromHex("60e431591ee0b67f0d8a26aacbf5b77f8e0bc6213728c5140546040f0ee37f54"));
}

TEST(Hkdf, BasicCase) {  // RFC 5869, A.1
  ExpectHkdf({.key = ByteVector(22, 0x0b),
              .salt = Counting(0x00, 13),
              .info = Counting(0xf0, 10),
              .prk = FromHex("077709362c2e32df0ddc3f0dc47bba6390b6c73bb50f9c3122ec844ad7c2b3e5"),
              .okm = FromHex(
                  "3cb25f25faacd57a90434f64d0362f2a2d2d0a90cf1a5a4c5db02d56ecc4c5bf34007208d5b887185865")});
}

TEST(Hkdf, LongerInputsAndOutput) {  // RFC 5869, A.2
  ExpectHkdf({.key = Counting(0x00, 80),
              .salt = Counting(0x60, 80),
              .info = Counting(0xb0, 80),
              .prk = FromHex("06a6b88c5853361a06104c9ceb35b45cef760014904671014a193f40c15fc244"),
              .okm = FromHex(
                  "b11e398dc80327a1c8e7f78c596a49344f012eda2d4efad8a050cc4c19afa97c59045a99cac7827271cb41c6"
                  "5e590e09da3275600c2f09b8367793a9aca3db71cc30c58179ec3e87c14c01d5c1f3434f1d87")});
}

TEST(Hkdf, NoSaltAndNoInfo) {  // RFC 5869, A.3
  ExpectHkdf({.key = ByteVector(22, 0x0b),
              .salt = {},
              .info = {},
              .prk = FromHex("19ef24a32c717b167f33a91d6f648bdf96596776afdb6377ac434c1c293ccb04"),
              .okm = FromHex(
                  "8da4e775a563c18f715f802a063c5a31b8a11f5c5ee1879ec3454e5f3c738d2d9d201395faa4b61a96c8")});
}

class DeriveKeys : public testing::TestWithParam<zuna_security::Suite> {};

TEST_P(DeriveKeys, FollowsItsFormula) {
  const zuna_security::Suite suite = GetParam();
  const ByteVector key = FromText("some key");
  const ByteVector iv = FromText("and an IV");
  const ByteVector label = FromText("zuna-sec v1");
  ByteVector info = label;
  info.push_back(static_cast<std::uint8_t>(suite));
  info.push_back(9);  // length of the IV, little-endian
  info.resize(info.size() + 7);
  info.insert(info.end(), iv.begin(), iv.end());
  const ByteVector prk = Hmac(label, {key});
  const std::uint8_t one = 1, two = 2, three = 3;
  const ByteVector first = Hmac(prk, {info, {&one, 1}});
  const ByteVector second = Hmac(prk, {first, info, {&two, 1}});
  const ByteVector third = Hmac(prk, {second, info, {&three, 1}});

  zuna_security::EnvelopeKeys keys;
  zuna_security::DeriveKeys({key, iv}, suite, keys);
  const auto cipher = keys.cipher.bytes();
  const auto check = keys.key_check.bytes();
  EXPECT_EQ(ByteVector(cipher.begin(), cipher.begin() + 32), first);
  EXPECT_EQ(ByteVector(cipher.begin() + 32, cipher.end()), second);
  EXPECT_EQ(ByteVector(check.begin(), check.end()), third);
}

INSTANTIATE_TEST_SUITE_P(All, DeriveKeys, testing::ValuesIn(zuna_security::kSuites), zuna_test::SuiteName);

}  // namespace
