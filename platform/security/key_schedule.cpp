// HMAC-SHA-256 (RFC 2104), HKDF (RFC 5869) and the keys of an envelope; docs/envelope.md.

#include "platform/security/key_schedule.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "platform/security/gcrypt_library.h"

namespace zuna_security {

namespace {

constexpr std::size_t kSha256BlockSize = 64;
constexpr std::string_view kLabel = "zuna-sec v1";

gcry_buffer_t Piece(Bytes bytes) {
  gcry_buffer_t piece{};
  piece.size = bytes.size();
  piece.len = bytes.size();
  piece.data = const_cast<std::uint8_t*>(bytes.data());  // libgcrypt only reads it
  return piece;
}

/// SHA-256 in one call. libgcrypt's own HMAC ends the process when memory runs out; this only reports.
void Sha256(Bytes first, std::initializer_list<Bytes> rest, std::span<std::uint8_t, kSha256Size> digest) {
  InitializeGcrypt();
  std::vector<gcry_buffer_t> pieces{Piece(first)};
  for (const Bytes part : rest) {
    if (!part.empty()) pieces.push_back(Piece(part));
  }
  CheckGcrypt(
      gcry_md_hash_buffers(GCRY_MD_SHA256, 0, digest.data(), pieces.data(), static_cast<int>(pieces.size())));
}

void Copy(Bytes from, MutableBytes to) { std::copy(from.begin(), from.end(), to.begin()); }

void XorAll(std::span<std::uint8_t, kSha256BlockSize> block, std::uint8_t value) {
  for (std::uint8_t& byte : block) byte = static_cast<std::uint8_t>(byte ^ value);
}

}  // namespace

void HmacSha256(Bytes key, std::initializer_list<Bytes> parts, std::span<std::uint8_t, kSha256Size> mac) {
  Secret<kSha256BlockSize> pad;
  if (key.size() > kSha256BlockSize) {
    Sha256(key, {}, pad.bytes().first<kSha256Size>());
  } else {
    Copy(key, pad.bytes());
  }
  XorAll(pad.bytes(), 0x36);
  Secret<kSha256Size> inner;
  Sha256(pad.bytes(), parts, inner.bytes());
  XorAll(pad.bytes(), 0x36 ^ 0x5c);
  Sha256(pad.bytes(), {inner.bytes()}, mac);
}

void HkdfExtract(Bytes salt, Bytes key, std::span<std::uint8_t, kSha256Size> prk) {
  HmacSha256(salt, {key}, prk);
}

void HkdfExpand(Bytes prk, Bytes info, Bytes more_info, MutableBytes okm) {
  Secret<kSha256Size> block;
  Bytes previous;
  for (std::uint8_t counter = 1; !okm.empty(); ++counter) {
    HmacSha256(prk, {previous, info, more_info, Bytes(&counter, 1)}, block.bytes());
    previous = block.bytes();
    const std::size_t taken = std::min(okm.size(), kSha256Size);
    Copy(previous.first(taken), okm);
    okm = okm.subspan(taken);
  }
}

void DeriveKeys(Bytes key, Bytes iv, std::uint8_t suite, EnvelopeKeys& keys) {
  const Bytes label(reinterpret_cast<const std::uint8_t*>(kLabel.data()), kLabel.size());
  std::vector<std::uint8_t> info(label.begin(), label.end());
  info.push_back(suite);
  for (unsigned shift = 0; shift < 64; shift += 8) {
    info.push_back(static_cast<std::uint8_t>(static_cast<std::uint64_t>(iv.size()) >> shift));
  }

  Secret<kSha256Size> prk;
  HkdfExtract(label, key, prk.bytes());
  Secret<64 + 32> okm;
  HkdfExpand(prk.bytes(), info, iv, okm.bytes());
  Copy(okm.bytes().first<64>(), keys.siv.bytes());
  Copy(okm.bytes().last<32>(), keys.key_check.bytes());
}

}  // namespace zuna_security
