// The bytes of an output, which are read back before they count.
#include "cli/batch/sealing.h"

#include "cli/shared/output.h"
#include "cli/terminal/failure.h"
#include "format_converter/version0/primitives/errors.h"
#include "toolkit/comparison/comparison.h"
#include "toolkit/document/open.h"
#include "toolkit/document/write.h"

namespace zuna_cli {

namespace {

/// The model of a legacy document; null for another one.
const version0::ShowData* ModelOf(const zuna_toolkit::LegacyShow* legacy) {
  return legacy != nullptr ? &legacy->show : nullptr;
}

const version0::ChangeLogV0* ModelOf(const zuna_toolkit::LegacyLog* legacy) {
  return legacy != nullptr ? &legacy->log : nullptr;
}

/// A comparison of legacy models passes over what only the second one has, and throws where the second one
/// lacks something.
template <typename Legacy>
bool HoldTheSameLegacy(const zuna_toolkit::Document& a, const zuna_toolkit::Document& b) try {
  const auto* first = ModelOf(a.As<Legacy>());
  const auto* second = ModelOf(b.As<Legacy>());
  return first != nullptr && second != nullptr && *first == *second && *second == *first;
} catch (const version0::Version0Error&) {
  return false;
}

/// Whether both hold the same.
bool HoldTheSame(const zuna_toolkit::Document& a, const zuna_toolkit::Document& b) {
  // This takes no memory, as a comparison in the current form does. A value that is no number is not its own
  // equal here, but is there.
  if (HoldTheSameLegacy<zuna_toolkit::LegacyShow>(a, b)) return true;
  if (HoldTheSameLegacy<zuna_toolkit::LegacyLog>(a, b)) return true;
  bool is_same = true;
  zuna_toolkit::Compare(a, b, [&](const zuna_toolkit::Difference&) { is_same = false; });
  return is_same;
}

}  // namespace

std::vector<std::uint8_t> Sealed(const zuna_toolkit::Document& document, const CipherKey& key,
                                 const std::string& name, bool verify) {
  std::vector<std::uint8_t> bytes = EncryptedBytes(*zuna_toolkit::CipherStreamOf(document, key), name);
  if (!verify) return bytes;
  std::optional<zuna_toolkit::OpenedFile> file = zuna_toolkit::OpenedFile::FromBytes(bytes, name, key);
  const zuna_toolkit::Document again = zuna_toolkit::ReadDocument(*file);
  file.reset();  // Its plaintext is not needed any more.
  if (HoldTheSame(document, again)) return bytes;
  throw Failure(ErrorCode::kInternal, name, "would not read back as it is written, and is not written",
                "please report it");
}

}  // namespace zuna_cli
