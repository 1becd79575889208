// A digest as text.

#include "zuna_sec/digest.h"

#include <array>

#include "kit/hex.h"
#include "platform/security/crypto.h"
#include "zuna_sec/errors.h"

namespace zuna_sec {

std::string Sha256Text(std::span<const std::uint8_t> bytes) try {
  std::array<std::uint8_t, zuna_security::kSha256Size> digest{};
  zuna_security::Sha256(bytes, {}, digest);
  return kit::EncodeHex(digest);
} catch (const zuna_security::GcryptFailure& failure) {
  throw CipherUnavailableError("SHA-256", std::string("is not available: ") + failure.what(),
                               "install libgcrypt 1.10 or later");
}

}  // namespace zuna_sec
