// Envelopes of every suite. The product writes the last one only.

#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/security/suites.h"
#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"

namespace zuna_test {

/// An envelope of `plaintext` in `suite`. One of suite 1 is put together from CMAC and CTR.
ByteVector Sealed(zuna_security::Suite suite, const std::string& plaintext, const CipherKey& key = kKey);

/// The tag and, behind it, the ciphertext of Twofish-256 in SIV mode, from its parts as RFC 5297 describes
/// it. `key` is the key of CMAC, then that of CTR mode.
ByteVector SivByParts(zuna_security::Bytes key, const ByteVector& associated, const ByteVector& plaintext);

/// Twofish-256 in CTR mode, by libgcrypt.
ByteVector Ctr(zuna_security::Bytes key, const ByteVector& counter, ByteVector text);

/// For the parameter of a test.
inline std::string SuiteName(const testing::TestParamInfo<zuna_security::Suite>& suite) {
  return "Suite" + std::to_string(static_cast<int>(suite.param));
}

}  // namespace zuna_test
