// The fields of an envelope and the checks in their order; docs/envelope.md.

#include "platform/security/envelope.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "kit/format.h"
#include "platform/security/stack.h"
#include "zuna_sec/damaged_envelope.h"
#include "zuna_sec/errors.h"

namespace zuna_security {

namespace {

// The first byte is not text. The line ends reveal a transfer that changes line ends; kChangedMagics.
using zuna_sec::kEnvelopeMagic;
constexpr std::uint8_t kVersion = 1;

static_assert(kEnvelopeMagic.size() == kVersionOffset);

void PutLength(MutableBytes field, std::uint64_t length) {
  for (std::uint8_t& byte : field) {
    byte = static_cast<std::uint8_t>(length);
    length >>= 8;
  }
}

/// A magic that a copy as text has changed.
struct ChangedMagic {
  std::string_view bytes;
  const char* problem;
  std::size_t offset = 0;  ///< of the first byte that is not as it was
};

constexpr std::size_t kLineEndOffset = 4;
constexpr const char* kLineEnds = "was changed in transfer: its line ends are not as they were (offset 4)";
constexpr const char* kEncodedAgain = "was changed in transfer: its bytes were encoded as UTF-8 (offset 0)";

constexpr std::array kChangedMagics = {
    ChangedMagic{"\x89ZSC\n\x1a\n", kLineEnds, kLineEndOffset},        // CR LF became LF, or CR was removed
    ChangedMagic{"\x89ZSC\r\r\n\x1a\r\n", kLineEnds, kLineEndOffset},  // LF became CR LF
    ChangedMagic{"\x89ZSC\r\n\x1a\r\n", kLineEnds,
                 kLineEndOffset},  // LF became CR LF, where no CR was before it
    ChangedMagic{"\x89ZSC\n\n\x1a\n", kLineEnds, kLineEndOffset},  // CR became LF
    ChangedMagic{"\x89ZSC\r\r\x1a\r", kLineEnds, kLineEndOffset},  // LF became CR
    ChangedMagic{"\x89ZSC\r\x1a", kLineEnds, kLineEndOffset},      // LF was removed
    ChangedMagic{"\xC2\x89ZSC", kEncodedAgain},                    // Latin-1 became UTF-8
    ChangedMagic{"\xEF\xBF\xBDZSC", kEncodedAgain},                // what is not UTF-8 became U+FFFD
    ChangedMagic{"\x09ZSC\r\n\x1a\n",
                 "was changed in transfer: its bytes have lost their eighth bit (offset 0)"},
};

void CheckTransfer(Bytes bytes, const std::string& name) {
  const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  for (const ChangedMagic& changed : kChangedMagics) {
    if (!text.starts_with(changed.bytes)) continue;
    throw zuna_sec::ChangedInTransferError(name, changed.problem, "copy it again as binary", changed.offset);
  }
}

void CheckMagic(Bytes bytes, const std::string& name) {
  if (bytes.empty()) {
    throw zuna_sec::EmptyError(name, "is empty, not an encrypted file", "give another file");
  }
  const std::size_t present = std::min(bytes.size(), kEnvelopeMagic.size());
  if (!std::equal(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(present),
                  kEnvelopeMagic.begin())) {
    CheckTransfer(bytes, name);
    throw zuna_sec::NotEncryptedError(name, "is not an encrypted file of this kind (offset 0)",
                                      "give an encrypted show or log file", 0);
  }
}

Suite SuiteOf(Bytes envelope) { return static_cast<Suite>(envelope[kSuiteOffset]); }

/// Another version may continue differently.
void CheckVersion(Bytes bytes, const std::string& name) {
  if (bytes.size() > kVersionOffset && bytes[kVersionOffset] != kVersion) {
    throw zuna_sec::UnsupportedEnvelopeError(
        name,
        kit::format("envelope version %d is not supported, only 1 is (offset 8)", int{bytes[kVersionOffset]}),
        "use a newer release", kVersionOffset);
  }
  if (bytes.size() > kSuiteOffset &&
      std::find(kSuites.begin(), kSuites.end(), SuiteOf(bytes)) == kSuites.end()) {
    throw zuna_sec::UnsupportedEnvelopeError(
        name,
        kit::format("cipher suite %d is not supported, only 1 and 2 are (offset 9)",
                    int{bytes[kSuiteOffset]}),
        "use a newer release", kSuiteOffset);
  }
  for (std::size_t i = kZeroOffset; i < std::min(bytes.size(), kLengthOffset); ++i) {
    if (bytes[i] == 0) continue;
    throw zuna_sec::UnsupportedEnvelopeError(
        name, kit::format("a reserved byte is %d instead of 0 (offset %zu)", int{bytes[i]}, i),
        "use a newer release or another copy of the file", i);
  }
}

void CheckLength(Bytes bytes, const std::string& name) {
  if (bytes.size() < kEnvelopeHeaderSize) {
    throw zuna_sec::TruncatedError(
        name, kit::format("ends inside the header (offset %zu of %zu)", bytes.size(), kEnvelopeHeaderSize),
        "get a complete copy of the file", bytes.size());
  }
  const unsigned long long stated = StatedLength(bytes);
  const std::size_t present = bytes.size() - kEnvelopeHeaderSize;
  if (present < stated) {
    throw zuna_sec::TruncatedError(
        name,
        kit::format("ends after %zu of %llu encrypted bytes (offset %zu)", present, stated, bytes.size()),
        "get a complete copy of the file", bytes.size());
  }
  if (present > stated) {
    throw zuna_sec::TrailingBytesError(name,
                                       kit::format("goes on after its %llu encrypted bytes (offset %llu)",
                                                   stated, stated + kEnvelopeHeaderSize),
                                       "get another copy of the file", stated + kEnvelopeHeaderSize);
  }
}

}  // namespace

std::uint64_t StatedLength(Bytes envelope) {
  std::uint64_t length = 0;
  for (std::size_t i = kKeyCheckOffset; i > kLengthOffset; --i) length = length << 8 | envelope[i - 1];
  return length;
}

void CheckKind(Bytes bytes, const std::string& name) {
  CheckMagic(bytes, name);
  CheckVersion(bytes, name);
}

Envelope ParseEnvelope(Bytes bytes, const std::string& name) {
  CheckKind(bytes, name);
  if (bytes.size() > kEnvelopeHeaderSize) CheckPlaintextSize(bytes.size() - kEnvelopeHeaderSize, name);
  CheckLength(bytes, name);
  return {SuiteOf(bytes), bytes.first(kTagOffset), bytes.subspan(kKeyCheckOffset, kKeyCheckSize),
          bytes.subspan(kTagOffset, kTagSize), bytes.subspan(kEnvelopeHeaderSize)};
}

void ThrowWrongKey(const std::string& name) {
  throw zuna_sec::WrongKeyError(name, "the key or the IV is not the one that this was encrypted with",
                                "give the right key file");
}

void ThrowUnavailable(const GcryptFailure& failure, const std::string& name) {
  throw zuna_sec::CipherUnavailableError(name,
                                         std::string("the cipher is not available (") + failure.what() + ")",
                                         "check the installed libgcrypt, and that it is not in FIPS mode");
}

void Open(const Envelope& envelope, const KeyAndIv& secrets, MutableBytes plaintext,
          const std::string& name) try {
  const StackWiper no_remains;
  EnvelopeKeys keys;
  DeriveKeys(secrets, envelope.suite, keys);
  if (!EqualInConstantTime(keys.key_check.bytes(), envelope.key_check)) ThrowWrongKey(name);
  if (!Decrypt(keys, envelope.associated, envelope.tag.first<kTagSize>(), envelope.ciphertext, plaintext)) {
    throw zuna_sec::DamagedError(name, "was changed after it was encrypted, though the key is right",
                                 "get an undamaged copy of the file");
  }
} catch (const GcryptFailure& failure) {
  ThrowUnavailable(failure, name);
}

void CheckPlaintextSize(std::size_t size, const std::string& name) {
  if (size <= kMaxPlaintextSize) return;
  throw zuna_sec::TooLargeError(name, "holds more than 1 GiB, the most that an encrypted file can",
                                "split the show");
}

void WriteAssociated(const EnvelopeKeys& keys, std::uint64_t length, MutableBytes associated) {
  Copy(kEnvelopeMagic, associated);
  associated[kVersionOffset] = kVersion;
  associated[kSuiteOffset] = static_cast<std::uint8_t>(keys.suite);
  std::fill(associated.begin() + kZeroOffset, associated.begin() + kLengthOffset, std::uint8_t{0});
  PutLength(associated.subspan(kLengthOffset, kKeyCheckOffset - kLengthOffset), length);
  Copy(keys.key_check.bytes(), associated.subspan(kKeyCheckOffset));
}

void Seal(Bytes plaintext, const KeyAndIv& secrets, MutableBytes envelope, const std::string& name) try {
  const StackWiper no_remains;
  EnvelopeKeys keys;
  DeriveKeys(secrets, kWrittenSuite, keys);
  WriteAssociated(keys, plaintext.size(), envelope.first(kTagOffset));
  Encrypt(keys, envelope.first(kTagOffset), plaintext, envelope.subspan(kEnvelopeHeaderSize),
          envelope.subspan(kTagOffset).first<kTagSize>());
} catch (const GcryptFailure& failure) {
  ThrowUnavailable(failure, name);
}

}  // namespace zuna_security
