// A libgcrypt that is too old, that another part of the program has initialised, and that refuses a key.

#include <dlfcn.h>
#include <gcrypt.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/bytes.h"
#include "zuna_sec/cipher_stream.h"
#include "zuna_sec/digest.h"
#include "zuna_sec/errors.h"

namespace {

bool g_is_old = false;
bool g_refuses_keys = false;
int g_open_ciphers = 0;

/// The function of libgcrypt that the one of this program replaces.
template <typename Function>
Function* Next(Function* /*type*/, const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

}  // namespace

const char* gcry_check_version(const char* required) {
  if (g_is_old) return required == nullptr ? "1.8.3" : nullptr;
  return Next(&gcry_check_version, "gcry_check_version")(required);
}

gcry_error_t gcry_cipher_open(gcry_cipher_hd_t* handle, int algorithm, int mode, unsigned flags) {
  const gcry_error_t error = Next(&gcry_cipher_open, "gcry_cipher_open")(handle, algorithm, mode, flags);
  if (error == 0) ++g_open_ciphers;
  return error;
}

void gcry_cipher_close(gcry_cipher_hd_t handle) {
  --g_open_ciphers;
  Next(&gcry_cipher_close, "gcry_cipher_close")(handle);
}

gcry_error_t gcry_cipher_setkey(gcry_cipher_hd_t handle, const void* key, std::size_t size) {
  if (g_refuses_keys) return gpg_error(GPG_ERR_WEAK_KEY);
  return Next(&gcry_cipher_setkey, "gcry_cipher_setkey")(handle, key, size);
}

namespace {

std::string SealingError() {
  zuna_sec::TwoFishCipherStream stream(std::string(), {}, {});
  return zuna_test::MessageOf<zuna_sec::CipherUnavailableError>([&] { stream.GetEncryptedBytes(); });
}

TEST(RefusingLibrary, IsTooOldAndIsAskedAgain) {
  g_is_old = true;
  const std::string too_old = "libgcrypt 1.10 or later is needed, this is 1.8.3";
  EXPECT_THAT(SealingError(), testing::HasSubstr(too_old));
  EXPECT_THAT(SealingError(), testing::HasSubstr(too_old));
  EXPECT_EQ(zuna_test::MessageOf<zuna_sec::CipherUnavailableError>([] { zuna_sec::Sha256Text({}); }),
            "SHA-256: is not available: " + too_old + "; install libgcrypt 1.10 or later");
  g_is_old = false;
}

TEST(RefusingLibrary, SecureMemoryOfAnInitialisedOneStays) {
  ASSERT_EQ(gcry_control(GCRYCTL_INITIALIZATION_FINISHED_P), 0U);
  gcry_control(GCRYCTL_SUSPEND_SECMEM_WARN);
  gcry_control(GCRYCTL_INIT_SECMEM, 16384, 0);
  gcry_control(GCRYCTL_INITIALIZATION_FINISHED, 0);
  zuna_sec::TwoFishCipherStream stream(std::string(), {}, {});
  EXPECT_EQ(stream.GetEncryptedBytes().size(), 72U);
  void* const memory = gcry_malloc_secure(16);
  EXPECT_EQ(gcry_is_secure(memory), 1);
  gcry_free(memory);
}

TEST(RefusingLibrary, RefusesAKeyAndIsLeftWithoutAnOpenCipher) {
  g_refuses_keys = true;
  EXPECT_THAT(SealingError(), testing::HasSubstr("the cipher is not available (Weak encryption key)"));
  g_refuses_keys = false;
  EXPECT_EQ(g_open_ciphers, 0);
}

}  // namespace
