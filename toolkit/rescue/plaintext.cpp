// Decrypts files that may be damaged.
#include "toolkit/rescue/internal/plaintext.h"

#include <string_view>
#include <utility>

#include "toolkit/error.h"
#include "toolkit/words.h"
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

/// Opens what may be several encrypted files, one after the other: the first of them.
zuna_sec::DamagedEnvelope OpenFirst(std::span<const std::uint8_t> bytes, const CipherKey& key,
                                    std::vector<std::string>& missing) {
  zuna_sec::DamagedEnvelope opened = zuna_sec::OpenDamaged(bytes, key);
  const std::size_t header = bytes.size() - opened.plaintext.size() - opened.trailing;
  if (opened.stated_size >= bytes.size() - header) return opened;
  const auto end = header + static_cast<std::size_t>(opened.stated_size);
  if (!IsEncrypted(bytes.subspan(end))) return opened;
  missing.push_back("the encrypted file that begins at byte " + std::to_string(end) + " of this one");
  if (opened.authentic) return opened;
  kit::Wipe(opened.plaintext);
  return zuna_sec::OpenDamaged(bytes.first(end), key);
}

Plaintext PlainBytes(std::span<const std::uint8_t> bytes) {
  Plaintext plaintext;
  plaintext.bytes.assign(bytes.begin(), bytes.end());
  plaintext.encrypted = false;
  plaintext.remarks.emplace_back("is not encrypted");
  return plaintext;
}

}  // namespace

Plaintext DecryptDamaged(std::span<const std::uint8_t> bytes, const CipherKey& key, Accept accept) {
  try {
    Plaintext plaintext;
    zuna_sec::DamagedEnvelope opened = OpenFirst(bytes, key, plaintext.missing);
    plaintext.bytes = std::move(opened.plaintext);  // wiped from here on
    plaintext.authentic = opened.authentic;
    plaintext.changed = !opened.authentic;
    if (!opened.authentic && opened.stated_size > plaintext.bytes.size()) {
      plaintext.missing_bytes = opened.stated_size - plaintext.bytes.size();
    }
    plaintext.remarks = RemarksOf(opened, plaintext.bytes.size());
    return plaintext;
  } catch (const zuna_sec::EmptyError&) {
    throw;
  } catch (const zuna_sec::ChangedInTransferError&) {
    throw;
  } catch (const zuna_sec::NotEncryptedError&) {
    if (accept == Accept::kEncryptedOrPlain) return PlainBytes(bytes);
    throw;
  } catch (const zuna_sec::WrongKeyError&) {
    if (!key.key.empty() || !key.iv.empty()) throw;
    throw Error(ErrorCode::kNoKey, "", "is encrypted with a key, and none was given", "give its key");
  }
}

}  // namespace zuna_toolkit
