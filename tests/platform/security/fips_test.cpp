// A libgcrypt that has no Twofish.

#include <gtest/gtest.h>

#include <cstdlib>

#include "zuna_sec/cipher_stream.h"
#include "zuna_sec/errors.h"

namespace {

TEST(CipherUnavailable, InFipsMode) {
  ASSERT_NE(std::getenv("LIBGCRYPT_FORCE_FIPS_MODE"), nullptr) << "decides when the program starts";
  zuna_sec::TwoFishCipherStream stream(std::string(), {}, {});
  try {
    stream.GetEncryptedBytes();
    FAIL();
  } catch (const zuna_sec::CipherUnavailableError& error) {
    const std::string message = error.what();
    EXPECT_EQ(message.find("encrypted data: the cipher is not available ("), 0U) << message;
    EXPECT_NE(message.find("); check the installed libgcrypt, and that it is not in FIPS mode"), message.npos)
        << message;
  }
}

}  // namespace
