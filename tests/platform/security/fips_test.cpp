// A libgcrypt that has no Twofish.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/support/bytes.h"
#include "zuna_sec/cipher_stream.h"
#include "zuna_sec/damaged_envelope.h"
#include "zuna_sec/errors.h"

namespace {

using zuna_sec::TwoFishCipherStream;

/// The message of the error that the cipher is not available.
template <typename Function>
std::string Unavailable(const Function& call) {
  EXPECT_NE(std::getenv("LIBGCRYPT_FORCE_FIPS_MODE"), nullptr) << "decides when the program starts";
  return zuna_test::MessageOf<zuna_sec::CipherUnavailableError>(call);
}

const auto kNamesFipsMode =
    testing::AllOf(testing::StartsWith("encrypted data: the cipher is not available ("),
                   testing::HasSubstr("); check the installed libgcrypt, and that it is not in FIPS mode"));

TEST(CipherUnavailable, InFipsMode) {
  TwoFishCipherStream stream(std::string(), {}, {});
  EXPECT_THAT(Unavailable([&] { stream.GetEncryptedBytes(); }), kNamesFipsMode);
}

TEST(CipherUnavailable, InFipsModeWhenAnEnvelopeIsOpened) {
  for (const char* empty : {
           "89 5A 53 43 0D 0A 1A 0A  01 01  00 00 00 00 00 00"  // magic, version, suite, zeros
           "00 00 00 00 00 00 00 00"                            // length of the plaintext
           "77 08 A0 F8 3F B0 AC ED 5F 33 CD 08 86 C8 11 B0"    // key check of the empty key and IV
           "53 A5 14 8C F7 D1 83 CC EE D7 B8 75 02 96 F8 1B"    //
           "EA 60 22 5D C1 D4 91 CA 9A 93 E6 D4 55 40 91 7A",   // tag
           "89 5A 53 43 0D 0A 1A 0A  01 02  00 00 00 00 00 00"  // the same in suite 2
           "00 00 00 00 00 00 00 00"                            //
           "3C 7A 06 D0 3C B2 86 4D 20 21 9A 53 9A BC 25 26"    //
           "FA F9 AA A8 E7 ED D6 33 EC CE 63 20 21 3F 69 4C"    //
           "31 C2 72 CE 34 F3 70 64 E8 74 8F 79 BC BC 5A DB",   //
       }) {
    const zuna_test::ByteVector envelope = zuna_test::FromHex(empty);
    EXPECT_THAT(Unavailable([&] { const TwoFishCipherStream stream(envelope, {}, {}); }), kNamesFipsMode);
    EXPECT_THAT(Unavailable([&] { zuna_sec::OpenDamaged(envelope, {}); }), kNamesFipsMode);
  }
}

}  // namespace
