// Decrypts files that may be damaged.
#include "toolkit/rescue/internal/plaintext.h"

#include <algorithm>
#include <optional>
#include <sstream>
#include <string_view>
#include <utility>

#include "cmn/file_format.h"
#include "toolkit/document/internal/content.h"
#include "toolkit/document/internal/legacy_damage.h"
#include "toolkit/document/internal/other_formats.h"
#include "toolkit/error.h"
#include "toolkit/rescue/internal/transfer.h"
#include "toolkit/words.h"
#include "zuna_sec/cipher_stream.h"
#include "zuna_sec/damaged_envelope.h"
#include "zuna_sec/errors.h"

namespace zuna_toolkit {

namespace {

/// What is wrong with an envelope, of which so many encrypted bytes are present.
std::vector<std::string> RemarksOf(const zuna_sec::DamagedEnvelope& opened, std::size_t present) {
  std::vector<std::string> remarks;
  std::string fields;
  for (const std::string_view field : opened.damaged_fields) AppendListed(fields, std::string(field));
  if (!fields.empty()) remarks.push_back("the header of its encryption is damaged (" + fields + ")");
  if (opened.trailing > 0) {
    remarks.push_back(Counted(opened.trailing, "byte follows", "bytes follow") + " its encrypted bytes");
  }
  if (opened.authentic) return remarks;
  if (present != opened.stated_size) {
    remarks.push_back("has " + std::to_string(present) + " encrypted bytes, and its header states " +
                      std::to_string(opened.stated_size));
  }
  if (present >= opened.stated_size) remarks.emplace_back("was changed after it was encrypted");
  return remarks;
}

constexpr std::size_t kMostOtherFiles = 100;

/// The encrypted files that begin after the first byte. One that was encoded as UTF-8 is none: its mark is
/// whole behind the byte 0xC2.
OtherFiles FindEncrypted(std::span<const std::uint8_t> bytes) {
  const std::string_view magic = AsText(zuna_sec::kEnvelopeMagic);
  const std::string_view file = AsText(bytes);
  const std::size_t from = file.starts_with('\xC2') ? 2 : 1;
  OtherFiles others;
  for (std::size_t at = file.find(magic, from); at != std::string_view::npos; at = file.find(magic, at + 1)) {
    if (others.places.size() < kMostOtherFiles) {
      others.places.push_back(at);
    } else {
      ++others.more;
    }
  }
  return others;
}

Plaintext PlainBytes(std::span<const std::uint8_t> bytes) {
  Plaintext plaintext;
  plaintext.bytes.assign(bytes.begin(), bytes.end());
  plaintext.encrypted = false;
  plaintext.end = bytes.size();
  plaintext.remarks.emplace_back("is not encrypted");
  return plaintext;
}

Plaintext Decrypted(std::span<const std::uint8_t> bytes, const CipherKey& key) {
  Plaintext plaintext;
  zuna_sec::DamagedEnvelope opened = zuna_sec::OpenDamaged(bytes, key);
  plaintext.bytes = std::move(opened.plaintext);  // wiped from here on
  plaintext.authentic = opened.authentic;
  plaintext.changed = !opened.authentic;
  if (!opened.authentic && opened.stated_size > plaintext.bytes.size()) {
    plaintext.missing_bytes = opened.stated_size - plaintext.bytes.size();
  }
  plaintext.end = bytes.size() - static_cast<std::size_t>(opened.trailing);
  plaintext.remarks = RemarksOf(opened, plaintext.bytes.size());
  return plaintext;
}

/// Makes a text begin with its brace where a byte order mark stands before it. No byte after it moves.
void SkipByteOrderMark(Plaintext& plaintext) {
  const std::string_view text = AsText(plaintext.bytes);
  const std::size_t mark = text.size() - WithoutByteOrderMark(text).size();
  if (mark == 0) return;
  const std::size_t brace = text.find_first_not_of(" \t\r\n", mark);
  if (brace == std::string_view::npos || text[brace] != cmn::kTextFormStart) return;
  std::fill_n(plaintext.bytes.begin(), brace + 1, std::uint8_t{' '});
  plaintext.bytes.front() = static_cast<std::uint8_t>(cmn::kTextFormStart);
  plaintext.remarks.emplace_back("a byte order mark stands before its text");
}

/// Whether the mark at the beginning shows that line ends were changed, by which no byte was added or lost.
bool HasOtherLineEnds(std::span<const std::uint8_t> bytes) {
  const auto mark = bytes.first(std::min(bytes.size(), zuna_sec::kEnvelopeMagic.size()));
  try {
    const zuna_sec::TwoFishCipherStream refused(ByteVector(mark.begin(), mark.end()), {}, {});
  } catch (const zuna_sec::ChangedInTransferError&) {
    return true;
  } catch (const zuna_sec::CipherError&) {
    // It is whole, or damaged otherwise.
  }
  return false;
}

/// The plaintext of a file that was copied as text, where that can be undone; none otherwise.
std::optional<Plaintext> DecryptTransferred(std::span<const std::uint8_t> bytes, const CipherKey& key) {
  const std::optional<ByteVector> before = BeforeTransfer(bytes);
  if (!before) return std::nullopt;
  try {
    Plaintext plaintext = Decrypted(*before, key);
    const bool is_whole = plaintext.authentic && plaintext.end == before->size();
    if (!is_whole) return std::nullopt;  // What follows it would be told by offsets of another file.
    plaintext.end = bytes.size();
    plaintext.remarks.emplace_back("was copied as text; the copy is undone, and all bytes are verified");
    return plaintext;
  } catch (const zuna_sec::CipherError&) {
    return std::nullopt;  // It was another file.
  }
}

Plaintext DecryptFirst(std::span<const std::uint8_t> bytes, const CipherKey& key, Accept accept) {
  try {
    Plaintext plaintext = Decrypted(bytes, key);
    if (plaintext.authentic) RequireEncryptedOnce(plaintext.bytes);
    if (!plaintext.authentic && HasOtherLineEnds(bytes)) {
      plaintext.remarks.insert(plaintext.remarks.begin(),
                               "was changed in transfer: its line ends are not as they were");
    }
    return plaintext;
  } catch (const zuna_sec::EmptyError&) {
    throw;
  } catch (const zuna_sec::ChangedInTransferError&) {
    if (auto plaintext = DecryptTransferred(bytes, key)) return std::move(*plaintext);
    throw;
  } catch (const zuna_sec::NotEncryptedError&) {
    std::istringstream plain{std::string(AsText(bytes))};
    if (!HoldsLegacySong(plain)) RequireNoOtherFormat(AsText(bytes));
    if (accept == Accept::kEncryptedOrPlain) return PlainBytes(bytes);
    throw;
  } catch (const zuna_sec::WrongKeyError&) {
    if (key.key.empty() && key.iv.empty()) {
      throw Error(ErrorCode::kNoKey, "", "is encrypted with a key, and none was given", "give its key");
    }
    throw Error(ErrorCode::kWrongKey, "",
                "the key or the IV is not the one that this was encrypted with, or its key check is damaged",
                "give the right key file");
  }
}

}  // namespace

Plaintext DecryptDamaged(std::span<const std::uint8_t> bytes, const CipherKey& key, Accept accept) {
  OtherFiles others = FindEncrypted(bytes);
  const std::size_t tail_end = others.places.empty() ? bytes.size() : others.places.front();
  try {
    Plaintext plaintext = DecryptFirst(bytes.first(tail_end), key, accept);
    SkipByteOrderMark(plaintext);
    plaintext.tail_end = tail_end;
    plaintext.others = std::move(others);
    return plaintext;
  } catch (const zuna_sec::TruncatedError&) {
    if (!others.places.empty()) ThrowBeginsLater(tail_end);
    throw;
  }
}

void ThrowBeginsLater(std::size_t at) {
  ErrorParts parts;
  parts.problem =
      "holds no song that can be read before byte " + std::to_string(at) + ", where an encrypted file begins";
  parts.remedy = "take that file with tail -c +" + std::to_string(at + 1);
  parts.offset = at;
  throw Error(ErrorCode::kNothingToSave, std::move(parts));
}

}  // namespace zuna_toolkit
