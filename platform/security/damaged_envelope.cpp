// Opens damaged envelopes without vouching for what they hold; docs/envelope.md.

#include "zuna_sec/damaged_envelope.h"

#include <algorithm>
#include <array>

#include "platform/security/envelope.h"
#include "platform/security/secret.h"
#include "platform/security/stack.h"

namespace zuna_sec {

namespace {

using zuna_security::Bytes;

const char* const kDamagedData = "encrypted data";

/// The probability that a wrong key agrees in as many bytes is below 2^-160.
constexpr std::ptrdiff_t kBytesThatTell = 24;
static_assert(kBytesThatTell < static_cast<std::ptrdiff_t>(zuna_security::kKeyCheckSize));

/// A field of the header.
struct Field {
  std::string_view name;
  std::size_t begin;
  std::size_t end;
};

constexpr std::array kFieldsBeforeLength = {
    Field{"magic", zuna_security::kMagicOffset, zuna_security::kVersionOffset},
    Field{"version", zuna_security::kVersionOffset, zuna_security::kSuiteOffset},
    Field{"suite", zuna_security::kSuiteOffset, zuna_security::kZeroOffset},
    Field{"reserved bytes", zuna_security::kZeroOffset, zuna_security::kLengthOffset},
};
constexpr Field kKeyCheckField = {"key check", zuna_security::kKeyCheckOffset, zuna_security::kTagOffset};

/// The header that an envelope must have had.
using Header = std::array<std::uint8_t, zuna_security::kTagOffset>;

void NoteDamage(const Field& field, Bytes bytes, const Header& header, DamagedEnvelope& opened) {
  const std::size_t size = field.end - field.begin;
  const Bytes right = Bytes(header).subspan(field.begin, size);
  if (std::equal(right.begin(), right.end(), bytes.subspan(field.begin, size).begin())) return;
  opened.damaged_fields.push_back(field.name);
}

/// Whether these are the keys of an envelope, as far as its key check is undamaged.
bool Agree(const zuna_security::EnvelopeKeys& keys, Bytes bytes) {
  const Bytes right = keys.key_check.bytes();
  std::ptrdiff_t equal = 0;
  for (std::size_t i = 0; i < right.size(); ++i) {
    equal += static_cast<std::ptrdiff_t>(right[i] == bytes[zuna_security::kKeyCheckOffset + i]);
  }
  return equal >= kBytesThatTell;
}

/// Derives the keys of an envelope. The key check tells its suite too, whose number may be damaged.
void DeriveKeysOf(Bytes bytes, const CipherKey& key, zuna_security::EnvelopeKeys& keys) {
  for (const zuna_security::Suite suite : zuna_security::kSuites) {
    zuna_security::DeriveKeys({key.key, key.iv}, suite, keys);
    if (Agree(keys, bytes)) return;
  }
  zuna_security::CheckKind(bytes, kDamagedData);
  zuna_security::ThrowWrongKey(kDamagedData);
}

/// Decrypts the plaintext of `bytes` if it has `size` bytes under this key and tag.
bool OpenAuthentic(Bytes bytes, std::size_t size, const zuna_security::EnvelopeKeys& keys,
                   DamagedEnvelope& opened) {
  Header header{};
  zuna_security::WriteAssociated(keys, size, header);
  const Bytes tag = bytes.subspan(zuna_security::kTagOffset);
  opened.plaintext.resize(size);
  opened.authentic =
      zuna_security::Decrypt(keys, header, tag.first<zuna_security::kTagSize>(),
                             bytes.subspan(zuna_security::kEnvelopeHeaderSize, size), opened.plaintext);
  return opened.authentic;
}

/// Decrypts what is there. Of a length and the bytes that are there, either may be wrong.
void Decrypt(Bytes bytes, const zuna_security::EnvelopeKeys& keys, DamagedEnvelope& opened) {
  const std::size_t present = bytes.size() - zuna_security::kEnvelopeHeaderSize;
  if (opened.stated_size < present &&
      OpenAuthentic(bytes, static_cast<std::size_t>(opened.stated_size), keys, opened)) {
    opened.trailing = present - opened.stated_size;
    return;
  }
  if (OpenAuthentic(bytes, present, keys, opened)) {
    if (opened.stated_size != present) opened.damaged_fields.push_back("length");
    return;
  }
  const Bytes tag = bytes.subspan(zuna_security::kTagOffset);
  zuna_security::DecryptUnchecked(keys, tag.first<zuna_security::kTagSize>(),
                                  bytes.subspan(zuna_security::kEnvelopeHeaderSize), opened.plaintext);
}

}  // namespace

DamagedEnvelope OpenDamaged(Bytes bytes, const CipherKey& key) try {
  const zuna_security::StackWiper no_remains;
  if (bytes.size() < zuna_security::kEnvelopeHeaderSize) zuna_security::ParseEnvelope(bytes, kDamagedData);
  zuna_security::CheckPlaintextSize(bytes.size() - zuna_security::kEnvelopeHeaderSize, kDamagedData);
  zuna_security::EnvelopeKeys keys;
  DeriveKeysOf(bytes, key, keys);

  DamagedEnvelope opened;
  opened.stated_size = zuna_security::StatedLength(bytes);
  Header header{};
  zuna_security::WriteAssociated(keys, opened.stated_size, header);
  for (const Field& field : kFieldsBeforeLength) NoteDamage(field, bytes, header, opened);
  NoteDamage(kKeyCheckField, bytes, header, opened);
  try {
    Decrypt(bytes, keys, opened);
  } catch (...) {
    zuna_security::Wipe(opened.plaintext);
    throw;
  }
  return opened;
} catch (const zuna_security::GcryptFailure& failure) {
  zuna_security::ThrowUnavailable(failure, kDamagedData);
}

}  // namespace zuna_sec
