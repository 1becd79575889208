// The input: length of the key (1 byte), length of the IV (1), key, IV, and an envelope.

#include <algorithm>
#include <iostream>
#include <iterator>
#include <span>
#include <vector>

#include "fuzz/target.h"
#include "zuna_sec/cipher_stream.h"
#include "zuna_sec/errors.h"

namespace {

using ByteVector = std::vector<std::uint8_t>;
using zuna_sec::TwoFishCipherStream;

/// Takes up to `count` bytes off the front.
ByteVector Take(std::span<const std::uint8_t>& input, std::size_t count) {
  const auto taken = input.first(std::min(count, input.size()));
  input = input.subspan(taken.size());
  return {taken.begin(), taken.end()};
}

std::size_t TakeLength(std::span<const std::uint8_t>& input) {
  const ByteVector length = Take(input, 1);
  return length.empty() ? 0 : length[0];
}

constexpr std::size_t kSuiteOffset = 9;
constexpr std::uint8_t kWrittenSuite = 2;

/// What is accepted seals to the same bytes again, unless its suite is an older one.
void OpenAndSeal(const ByteVector& envelope, const ByteVector& key, const ByteVector& iv) {
  try {
    TwoFishCipherStream stream(envelope, key, iv);
    if (envelope.at(kSuiteOffset) != kWrittenSuite) return;
    fuzz::Require(stream.GetEncryptedBytes() == envelope, "an accepted envelope seals to itself");
  } catch (const zuna_sec::CipherError&) {
    return;  // refused, as most inputs are
  }
}

/// What is sealed opens to the same bytes again.
void SealAndOpen(const ByteVector& plaintext, const ByteVector& key, const ByteVector& iv) {
  TwoFishCipherStream sealed(std::string(), key, iv);
  sealed.GetStream().write(reinterpret_cast<const char*>(plaintext.data()),
                           static_cast<std::streamsize>(plaintext.size()));
  TwoFishCipherStream opened(sealed.GetEncryptedBytes(), key, iv);
  const ByteVector back{std::istreambuf_iterator<char>(opened.GetStream()), {}};
  fuzz::Require(back == plaintext, "a sealed plaintext opens to itself");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::span<const std::uint8_t> input(data, size);
  const std::size_t key_length = TakeLength(input);
  const std::size_t iv_length = TakeLength(input);
  const ByteVector key = Take(input, key_length);
  const ByteVector iv = Take(input, iv_length);
  const ByteVector envelope(input.begin(), input.end());
  OpenAndSeal(envelope, key, iv);
  SealAndOpen(envelope, key, iv);
  return 0;
}
