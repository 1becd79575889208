// Mutates the inputs of the envelope target: lengths of key and IV, key, IV and envelope. A part of the
// envelopes is sealed again, so that a changed content gets past the key check and the tag; of another part
// only the length in the header is right again.

#include <iostream>
#include <vector>

#include "fuzz/mend/numbers.h"
#include "fuzz/mutators/mutators.h"
#include "zuna_sec/cipher_stream.h"

namespace {

constexpr std::size_t kLengthAt = 16;
constexpr std::size_t kHeaderSize = 72;
constexpr std::size_t kLengths = 2;

using ByteVector = std::vector<std::uint8_t>;

/// An input whose envelope has at least a header.
struct Input {
  std::string before;  ///< lengths, key and IV
  ByteVector key;
  ByteVector iv;
  std::string envelope;
};

Input Split(const std::string& bytes) {
  const std::size_t key_size = static_cast<std::uint8_t>(bytes[0]);
  const std::size_t iv_size = static_cast<std::uint8_t>(bytes[1]);
  const auto key = bytes.begin() + kLengths;
  const auto iv = key + static_cast<std::ptrdiff_t>(key_size);
  const auto envelope = iv + static_cast<std::ptrdiff_t>(iv_size);
  return {{bytes.begin(), envelope}, {key, iv}, {iv, envelope}, {envelope, bytes.end()}};
}

bool HasHeader(const std::string& bytes) {
  if (bytes.size() < kLengths + kHeaderSize) return false;
  return bytes.size() >=
         kLengths + static_cast<std::uint8_t>(bytes[0]) + static_cast<std::uint8_t>(bytes[1]) + kHeaderSize;
}

std::string Sealed(const Input& input) {
  zuna_sec::TwoFishCipherStream stream(std::string(), input.key, input.iv);
  stream.GetStream().write(input.envelope.data() + kHeaderSize,
                           static_cast<std::streamsize>(input.envelope.size() - kHeaderSize));
  const ByteVector envelope = stream.GetEncryptedBytes();
  return {envelope.begin(), envelope.end()};
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max_size,
                                               unsigned seed) {
  std::mt19937 random(seed);
  size = LLVMFuzzerMutate(data, size, max_size);
  const std::string bytes(data, data + size);
  if (!HasHeader(bytes)) return size;
  Input input = Split(bytes);
  switch (random() % 3) {
    case 0:
      input.envelope = Sealed(input);
      break;
    case 1:
      fuzz::PutNumber(input.envelope, kLengthAt, 8, input.envelope.size() - kHeaderSize);
      break;
    default:
      return size;
  }
  return fuzz::PutBack(input.before + input.envelope, data, max_size);
}
