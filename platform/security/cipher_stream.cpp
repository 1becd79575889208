// Opens and seals whole files and byte vectors; docs/envelope.md.

#include "zuna_sec/cipher_stream.h"

#include <utility>

#include "kit/error.h"
#include "kit/file.h"
#include "kit/format.h"
#include "kit/memory_block.h"
#include "platform/security/envelope.h"
#include "platform/security/plaintext_stream.h"
#include "zuna_sec/errors.h"

namespace zuna_sec {

namespace {

using zuna_security::kEnvelopeHeaderSize;

const char* const kUnnamed = "encrypted data";

/// The plaintext to encrypt. A stream that ran out of memory has lost part of what was written to it. It is
/// refused, because the rest would pass for the whole.
zuna_security::Bytes ContentsToSeal(PlaintextStream& plaintext, const char* cipher, const std::string& name) {
  if (plaintext.bad()) {
    throw kit::IoError(name + ": cannot be encrypted (" + cipher +
                       "), because a write to its stream failed; free some memory and try again");
  }
  const zuna_security::Bytes contents = plaintext.buffer().Contents();
  zuna_security::CheckPlaintextSize(contents.size(), name);
  return contents;
}

kit::FileBytes ReadEnvelope(const std::string& path) try {
  return kit::ReadWholeFile(path, zuna_security::kMaxEnvelopeSize);
} catch (const kit::FileTooLargeError& error) {
  throw TooLargeError(
      path, kit::format("holds more than %zu bytes, the most that an encrypted file can", error.limit()),
      "give another file");
}

}  // namespace

CipherStream::CipherStream() : plaintext_(std::make_unique<PlaintextStream>()) {}

CipherStream::~CipherStream() = default;

std::iostream& CipherStream::GetStream() { return *plaintext_; }

// Both constructors copy the key last, so that a refused file leaves no copy of it in memory.

TwoFishCipherStream::TwoFishCipherStream(const std::string& path, const std::vector<std::uint8_t>& key,
                                         const std::vector<std::uint8_t>& iv) {
  if (!path.empty()) {
    kit::FileBytes file = ReadEnvelope(path);
    const zuna_security::Envelope envelope =
        zuna_security::ParseEnvelope({file.block.data(), file.size}, path);
    const std::size_t size = envelope.ciphertext.size();
    zuna_security::Open(envelope, {key, iv}, {file.block.data() + kEnvelopeHeaderSize, size}, path);
    plaintext().buffer().Assign(std::move(file.block), kEnvelopeHeaderSize, size);
  }
  key_ = key;
  iv_ = iv;
}

TwoFishCipherStream::TwoFishCipherStream(const std::vector<std::uint8_t>& data,
                                         const std::vector<std::uint8_t>& key,
                                         const std::vector<std::uint8_t>& iv) {
  const zuna_security::Envelope envelope = zuna_security::ParseEnvelope(data, kUnnamed);
  const std::size_t size = envelope.ciphertext.size();
  kit::MemoryBlock block(size);
  zuna_security::Open(envelope, {key, iv}, {block.data(), size}, kUnnamed);
  plaintext().buffer().Assign(std::move(block), 0, size);
  key_ = key;
  iv_ = iv;
}

TwoFishCipherStream::~TwoFishCipherStream() {
  zuna_security::Wipe(key_);
  zuna_security::Wipe(iv_);
}

void TwoFishCipherStream::WriteToFile(const std::string& path) {
  const zuna_security::Bytes contents = ContentsToSeal(plaintext(), CipherName(), path);
  const kit::MemoryBlock block(kEnvelopeHeaderSize + contents.size());
  const zuna_security::MutableBytes envelope(block.data(), kEnvelopeHeaderSize + contents.size());
  zuna_security::Seal(contents, {key_, iv_}, envelope, path);
  kit::WriteFileAtomically(path, envelope);
}

std::vector<std::uint8_t> TwoFishCipherStream::GetEncryptedBytes() {
  const zuna_security::Bytes contents = ContentsToSeal(plaintext(), CipherName(), kUnnamed);
  std::vector<std::uint8_t> envelope(kEnvelopeHeaderSize + contents.size());
  zuna_security::Seal(contents, {key_, iv_}, envelope, kUnnamed);
  return envelope;
}

const char* TwoFishCipherStream::CipherName() const { return "Twofish"; }

}  // namespace zuna_sec
