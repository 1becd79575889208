// Keys with good and bad envelopes.

#include <array>
#include <iostream>

#include "fuzz/seeds/seeds.h"
#include "zuna_sec/cipher_stream.h"

namespace {

using ByteVector = std::vector<std::uint8_t>;

struct Secrets {
  ByteVector key;
  ByteVector iv;
};

ByteVector Seal(const std::string& plaintext, const Secrets& secrets) {
  zuna_sec::TwoFishCipherStream stream(std::string(), secrets.key, secrets.iv);
  stream.GetStream() << plaintext;
  return stream.GetEncryptedBytes();
}

/// The target's input for an envelope.
ByteVector Input(const ByteVector& envelope, const Secrets& secrets) {
  ByteVector input{static_cast<std::uint8_t>(secrets.key.size()),
                   static_cast<std::uint8_t>(secrets.iv.size())};
  for (const ByteVector* part : {&secrets.key, &secrets.iv, &envelope}) {
    input.insert(input.end(), part->begin(), part->end());
  }
  return input;
}

/// An envelope of suite 1, which is not written any more: no plaintext, under the empty key and IV.
constexpr std::array<std::uint8_t, 72> kEmptyOfSuite1{
    0x89, 0x5A, 0x53, 0x43, 0x0D, 0x0A, 0x1A, 0x0A,  // magic
    1,    1,    0,    0,    0,    0,    0,    0,     // envelope version, suite, zeros
    0,    0,    0,    0,    0,    0,    0,    0,     // length of the plaintext
    0x77, 0x08, 0xA0, 0xF8, 0x3F, 0xB0, 0xAC, 0xED,  // key check
    0x5F, 0x33, 0xCD, 0x08, 0x86, 0xC8, 0x11, 0xB0,  //
    0x53, 0xA5, 0x14, 0x8C, 0xF7, 0xD1, 0x83, 0xCC,  //
    0xEE, 0xD7, 0xB8, 0x75, 0x02, 0x96, 0xF8, 0x1B,  //
    0xEA, 0x60, 0x22, 0x5D, 0xC1, 0xD4, 0x91, 0xCA,  // tag
    0x9A, 0x93, 0xE6, 0xD4, 0x55, 0x40, 0x91, 0x7A,  //
};

ByteVector Changed(ByteVector bytes, std::size_t offset, std::uint8_t value) {
  bytes[offset] = value;
  return bytes;
}

ByteVector Resized(ByteVector bytes, std::size_t size) {
  bytes.resize(size);
  return bytes;
}

}  // namespace

void fuzz::WriteSeeds(const SeedFolder& folder) {
  const Secrets none;
  const Secrets usual{ByteVector(16, 0x4B), ByteVector(16, 0x49)};
  const Secrets longest{ByteVector(255, 0x4B), ByteVector(255, 0x49)};
  const ByteVector good = Seal("seventeen letters", usual);

  folder.Write("good-empty", Input(Seal("", usual), usual));
  folder.Write("good-without-key", Input(Seal("seventeen letters", none), none));
  folder.Write("good-one-block", Input(Seal("sixteen letters.", usual), usual));
  folder.Write("good-one-block-and-a-byte", Input(good, usual));
  folder.Write("good-long-key", Input(Seal(std::string(200, 'x'), longest), longest));
  folder.Write("bad-no-input", {});
  folder.Write("bad-key-beyond-the-end", {255, 255, 1, 2, 3});
  folder.Write("bad-wrong-key", Input(good, longest));
  folder.Write("bad-magic", Input(Changed(good, 0, 'M'), usual));
  folder.Write("bad-length", Input(Changed(good, 23, 0xFF), usual));
  folder.Write("bad-tag", Input(Changed(good, 56, static_cast<std::uint8_t>(good[56] ^ 1)), usual));
  folder.Write("bad-truncated-header", Input(Resized(good, 71), usual));
  folder.Write("bad-truncated", Input(Resized(good, good.size() - 1), usual));
  folder.Write("bad-trailing-byte", Input(Resized(good, good.size() + 1), usual));
  folder.Write("unsupported-version", Input(Changed(good, 8, 2), usual));
  folder.Write("unsupported-suite", Input(Changed(good, 9, 3), usual));
  folder.Write("bad-other-suite", Input(Changed(good, 9, 1), usual));
  folder.Write("good-suite-1", Input({kEmptyOfSuite1.begin(), kEmptyOfSuite1.end()}, none));
}
