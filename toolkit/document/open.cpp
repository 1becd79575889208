// Opens files: encrypted, or plain where that is accepted.
#include "toolkit/document/open.h"

#include <algorithm>
#include <istream>
#include <string_view>
#include <utility>

#include "format_converter/version0/containers/change_log_header.h"
#include "kit/file.h"
#include "toolkit/document/internal/content.h"
#include "toolkit/document/internal/legacy_damage.h"
#include "toolkit/document/internal/other_formats.h"
#include "toolkit/internal/translate.h"
#include "toolkit/words.h"
#include "zuna_sec/errors.h"

namespace zuna_toolkit {

namespace {

using Bytes = std::vector<std::uint8_t>;
using Cipher = zuna_sec::TwoFishCipherStream;

/// What a file is that is not encrypted, as problem and remedy.
struct PlainKind {
  std::string problem;
  std::string remedy = "use encrypt first";
};

/// Both texts are empty where nothing is known about it.
PlainKind PlainKindOf(std::string_view text) {
  if (text.starts_with(version0::kChangeLogMagic)) return {"is a plain log"};
  for (const cmn::FileKind kind : {cmn::FileKind::kShow, cmn::FileKind::kLog}) {
    if (text.starts_with(cmn::BinaryMagic(kind))) return {"is a plain " + std::string(cmn::KindName(kind))};
  }
  if (const std::string version = VersionForBuild(text); !version.empty()) {
    return {"is plain text of version " + version, kUseBuild};
  }
  if (BeginsLikeTextForm(text)) return {"is plain text"};
  return {"", ""};
}

/// The same for what has no mark: it is a plain legacy show if a song of it can be read.
PlainKind UnmarkedKindOf(std::istream& stream) {
  return HoldsLegacySong(stream) ? PlainKind{"is a plain show"} : PlainKind{"", ""};
}

std::unique_ptr<Cipher> MakePlain(std::span<const std::uint8_t> bytes) {
  auto plain = std::make_unique<Cipher>("", Bytes(), Bytes());
  plain->GetStream().exceptions(std::ios_base::failbit | std::ios_base::badbit);
  plain->GetStream().write(reinterpret_cast<const char*>(bytes.data()),
                           static_cast<std::streamsize>(bytes.size()));
  Rewind(plain->GetStream());
  return plain;
}

Bytes ReadFile(const std::string& path) {
  const kit::FileBytes file = kit::ReadWholeFile(path, kMaxFileSize);
  return {file.bytes().begin(), file.bytes().end()};
}

/// The plaintext, and whether it was encrypted.
std::pair<std::unique_ptr<Cipher>, bool> Open(const Bytes& bytes, const CipherKey& key, Accept accept) {
  try {
    return {std::make_unique<Cipher>(bytes, key.key, key.iv), true};
  } catch (const zuna_sec::EmptyError&) {
    throw;
  } catch (const zuna_sec::ChangedInTransferError&) {
    throw;
  } catch (const zuna_sec::NotEncryptedError&) {
    std::unique_ptr<Cipher> plain = MakePlain(bytes);
    if (accept == Accept::kEncryptedOrPlain) return {std::move(plain), false};
    if (!HoldsLegacySong(plain->GetStream())) RequireNoOtherFormat(AsText(bytes));
    PlainKind kind = PlainKindOf(AsText(bytes));
    if (kind.problem.empty()) kind = UnmarkedKindOf(plain->GetStream());
    if (kind.problem.empty()) throw;
    throw Error(ErrorCode::kPlainFile, "", kind.problem, kind.remedy);
  } catch (const zuna_sec::WrongKeyError&) {
    if (!key.key.empty() || !key.iv.empty()) throw;
    throw Error(ErrorCode::kNoKey, "", "is encrypted with a key, and none was given", "give its key");
  }
}

}  // namespace

OpenedFile::OpenedFile(const std::string& path, const CipherKey& key, Accept accept)
    : OpenedFile(path, OnFile(path, [&] { return Open(ReadFile(path), key, accept); })) {}

OpenedFile OpenedFile::FromBytes(const Bytes& bytes, const std::string& name, const CipherKey& key,
                                 Accept accept) {
  return {name, OnFile(name, [&] { return Open(bytes, key, accept); })};
}

bool IsEncrypted(std::span<const std::uint8_t> bytes) {
  constexpr std::size_t kProbe = 64;         // bytes; a part is enough to recognise an encrypted file
  constexpr std::size_t kSmallestProbe = 8;  // bytes; fewer may be anything
  if (bytes.size() < kSmallestProbe) return false;
  const auto probe = bytes.first(std::min(bytes.size(), kProbe));
  try {
    const Cipher opened(Bytes(probe.begin(), probe.end()), {}, {});
  } catch (const zuna_sec::NotEncryptedError&) {
    return false;
  } catch (const zuna_sec::CipherError&) {
    return true;  // A part of an encrypted file cannot be opened.
  }
  return true;
}

Document OpenDocument(const std::string& path, const CipherKey& key, Accept accept) {
  OpenedFile file(path, key, accept);
  return ReadDocument(file);
}

}  // namespace zuna_toolkit
