#include "zuna_sec/digest.h"

#include <gtest/gtest.h>

#include "tests/support/bytes.h"

namespace {

std::string DigestOf(const std::string& text) { return zuna_sec::Sha256Text(zuna_test::FromText(text)); }

// The examples of FIPS 180-2, appendix B, and the digest of nothing.
TEST(Sha256Text, GivesKnownAnswers) {
  EXPECT_EQ(DigestOf(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(DigestOf("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(DigestOf("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
            "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
}

}  // namespace
