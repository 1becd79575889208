// Keys with good and bad envelopes.

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
  folder.Write("unsupported-suite", Input(Changed(good, 9, 2), usual));
}
