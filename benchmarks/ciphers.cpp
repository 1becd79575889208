// The ciphers of envelopes alone, by libgcrypt.

#include "benchmarks/ciphers.h"

#include <benchmark/benchmark.h>
#include <gcrypt.h>

#include <array>
#include <cstddef>
#include <span>

namespace zuna_bench {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::array<std::uint8_t, 64> kAnyKey{1};

gcry_buffer_t Part(Bytes bytes) {
  gcry_buffer_t part{};
  part.size = bytes.size();
  part.len = bytes.size();
  part.data = const_cast<std::uint8_t*>(bytes.data());  // libgcrypt only reads it
  return part;
}

void Encrypt(gcry_cipher_modes mode, Bytes key, std::vector<std::uint8_t>& text) {
  gcry_cipher_hd_t handle = nullptr;
  gcry_cipher_open(&handle, GCRY_CIPHER_TWOFISH, mode, 0);
  gcry_cipher_setkey(handle, key.data(), key.size());
  gcry_cipher_encrypt(handle, text.data(), text.size(), nullptr, 0);
  benchmark::DoNotOptimize(text.data());
  gcry_cipher_close(handle);
}

}  // namespace

void Hmac(const std::vector<std::uint8_t>& text) {
  const std::array parts{Part(Bytes(kAnyKey).first(32)), Part(text)};
  std::array<std::uint8_t, 32> mac{};
  gcry_md_hash_buffers(GCRY_MD_SHA256, GCRY_MD_FLAG_HMAC, mac.data(), parts.data(), parts.size());
  benchmark::DoNotOptimize(mac);
}

void Ctr(std::vector<std::uint8_t>& text) { Encrypt(GCRY_CIPHER_MODE_CTR, Bytes(kAnyKey).first(32), text); }

void Siv(std::vector<std::uint8_t>& text) { Encrypt(GCRY_CIPHER_MODE_SIV, kAnyKey, text); }

}  // namespace zuna_bench
