// Keys by HKDF-SHA-256 (RFC 5869), and the two ways to a tag; docs/envelope.md.

#include "platform/security/suites.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "platform/security/crypto.h"

namespace zuna_security {

namespace {

constexpr std::string_view kLabel = "zuna-sec v1";  // of the key derivation

std::span<const std::uint8_t, kTwofishKeySize> TagKey(const EnvelopeKeys& keys) {
  return keys.cipher.bytes().first<kTwofishKeySize>();
}

std::span<const std::uint8_t, kTwofishKeySize> CtrKey(const EnvelopeKeys& keys) {
  return keys.cipher.bytes().last<kTwofishKeySize>();
}

/// The first bytes of HMAC-SHA-256 over both. The associated data has a fixed size, which keeps them apart.
void HmacTag(const EnvelopeKeys& keys, Bytes associated, Bytes plaintext,
             std::span<std::uint8_t, kTagSize> tag) {
  Secret<kSha256Size> mac;
  HmacSha256(TagKey(keys), {associated, plaintext}, mac.bytes());
  Copy(mac.bytes().first<kTagSize>(), tag);
}

/// The tag is known only when everything is decrypted.
bool DecryptByHmac(const EnvelopeKeys& keys, Bytes associated, Tag tag, Bytes ciphertext,
                   MutableBytes plaintext) try {
  TwofishCtr(CtrKey(keys), tag, ciphertext, plaintext);
  Secret<kTagSize> right;
  HmacTag(keys, associated, plaintext, right.bytes());
  if (EqualInConstantTime(right.bytes(), tag)) return true;
  Wipe(plaintext);
  return false;
} catch (...) {
  Wipe(plaintext);
  throw;
}

}  // namespace

void DeriveKeys(const KeyAndIv& secrets, Suite suite, EnvelopeKeys& keys) {
  const Bytes label(reinterpret_cast<const std::uint8_t*>(kLabel.data()), kLabel.size());
  std::vector<std::uint8_t> info(label.begin(), label.end());
  info.push_back(static_cast<std::uint8_t>(suite));
  for (unsigned shift = 0; shift < 64; shift += 8) {  // the length of the IV in 8 bytes, lowest first
    info.push_back(static_cast<std::uint8_t>(static_cast<std::uint64_t>(secrets.iv.size()) >> shift));
  }

  Secret<kSha256Size> prk;
  HkdfExtract(label, secrets.key, prk.bytes());
  Secret<2 * kTwofishKeySize + kKeyCheckSize> okm;
  HkdfExpand(prk.bytes(), info, secrets.iv, okm.bytes());
  keys.suite = suite;
  Copy(okm.bytes().first<2 * kTwofishKeySize>(), keys.cipher.bytes());
  Copy(okm.bytes().last<kKeyCheckSize>(), keys.key_check.bytes());
}

void Encrypt(const EnvelopeKeys& keys, Bytes associated, Bytes plaintext, MutableBytes ciphertext,
             std::span<std::uint8_t, kTagSize> tag) {
  HmacTag(keys, associated, plaintext, tag);
  TwofishCtr(CtrKey(keys), tag, plaintext, ciphertext);
}

bool Decrypt(const EnvelopeKeys& keys, Bytes associated, Tag tag, Bytes ciphertext, MutableBytes plaintext) {
  if (keys.suite == Suite::kHmac) return DecryptByHmac(keys, associated, tag, ciphertext, plaintext);
  return TwofishSivDecrypt(keys.cipher.bytes(), associated, tag, ciphertext, plaintext);
}

void DecryptUnchecked(const EnvelopeKeys& keys, Tag tag, Bytes ciphertext, MutableBytes plaintext) {
  std::array<std::uint8_t, kTagSize> counter{};
  Copy(tag, counter);
  if (keys.suite == Suite::kCmac) {  // RFC 5297, section 2.6: the counter is the tag without two of its bits
    counter[8] &= 0x7f;
    counter[12] &= 0x7f;
  }
  TwofishCtr(CtrKey(keys), counter, ciphertext, plaintext);
}

}  // namespace zuna_security
