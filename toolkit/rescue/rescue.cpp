// What can still be read of a damaged file: decrypts it, finds out what it was, and looks whether the rest is
// a document (docs/damaged-files.md).
#include "toolkit/rescue/rescue.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "format_converter/version0/containers/change_log_header.h"
#include "kit/wipe.h"
#include "toolkit/document/summary.h"
#include "toolkit/document/write.h"
#include "toolkit/error.h"
#include "toolkit/internal/translate.h"
#include "toolkit/rescue/internal/plaintext.h"
#include "toolkit/rescue/internal/salvage.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kMagicSize = 4;      // at the front of the header
constexpr std::size_t kVersionOffset = 8;  // of two bytes
constexpr std::size_t kBytesThatTell = 3;  // of a magic

/// The document that `plaintext` is as it stands; none where it cannot be read.
std::optional<Document> ReadWhole(const ByteVector& plaintext, const std::string& name) {
  try {
    OpenedFile file = OpenedFile::FromBytes(plaintext, name, {}, Accept::kEncryptedOrPlain);
    return ReadDocument(file);
  } catch (const Error&) {
    return std::nullopt;
  }
}

/// The magic that a binary file of a current version must have had, if it was one; the size in its header
/// makes up for one damaged byte.
std::optional<cmn::FileKind> BinaryKind(std::string_view plaintext) {
  if (plaintext.size() < kBinaryHeaderSize) return std::nullopt;
  for (const cmn::FileKind kind : {cmn::FileKind::kShow, cmn::FileKind::kLog}) {
    const std::string_view magic = cmn::BinaryMagic(kind);
    std::size_t equal = 0;
    for (std::size_t i = 0; i < kMagicSize; ++i) equal += static_cast<std::size_t>(magic[i] == plaintext[i]);
    if (equal >= kBytesThatTell) return kind;
  }
  return std::nullopt;
}

/// The header of a whole file.
std::string HeaderOf(cmn::FileKind kind, cmn::FileVersion version, std::size_t file_size) {
  std::string header(cmn::BinaryMagic(kind));
  const std::size_t size = file_size - kVersionOffset;
  for (unsigned shift = 0; shift < 32; shift += 8) header += static_cast<char>(size >> shift);
  header += static_cast<char>(version.major);
  header += static_cast<char>(version.minor);
  return header;
}

/// Salvages a binary file. Where its version is damaged, it is the one at which most songs come back.
Salvage SalvageDamagedBinary(std::string_view plaintext, cmn::FileKind kind) {
  const cmn::FileVersion stated{static_cast<std::uint8_t>(plaintext[kVersionOffset]),
                                static_cast<std::uint8_t>(plaintext[kVersionOffset + 1])};
  std::optional<Salvage> best;
  const bool is_known = cmn::IsSupported(kind, stated);
  for (const cmn::FileVersion& version : cmn::SupportedVersions(kind)) {
    if (is_known ? version != stated : version.major != 1) continue;
    Salvage salvage = SalvageBinary(plaintext, kind, version);
    if (!best || salvage.report.saved() > best->report.saved()) best = std::move(salvage);
  }
  return std::move(*best);
}

std::size_t WholeSongs(const Salvage& salvage) {
  const auto& songs = salvage.report.songs;
  return static_cast<std::size_t>(std::count_if(
      songs.begin(), songs.end(), [](const RescuedSong& song) { return song.state == SongState::kWhole; }));
}

/// A legacy show has no magic, and that of a log may be damaged.
Salvage SalvageLegacy(std::string_view plaintext) {
  Salvage log = SalvageLegacyLog(plaintext);
  if (plaintext.starts_with(version0::kChangeLogMagic)) return log;
  Salvage show = SalvageLegacyShow(plaintext);
  return WholeSongs(log) > WholeSongs(show) ? std::move(log) : std::move(show);
}

Salvage SalvageAny(std::string_view plaintext) {
  if (plaintext.find(kSongKey) != std::string_view::npos) return SalvageText(plaintext);
  if (const auto kind = BinaryKind(plaintext)) return SalvageDamagedBinary(plaintext, *kind);
  return SalvageLegacy(plaintext);
}

/// Whether files of this version have a checksum.
bool HasChecksum(cmn::FileVersion version) { return version.major == 1 && version.minor > 0; }

/// The document that `plaintext` would be with another header, if its checksum vouches for that.
std::optional<Document> ReadWithHeader(const Plaintext& plaintext, const std::string& name) {
  const auto kind = BinaryKind(AsText(plaintext.bytes));
  if (!kind) return std::nullopt;
  for (const cmn::FileVersion& version : cmn::SupportedVersions(*kind)) {
    if (!HasChecksum(version)) continue;
    const std::string header = HeaderOf(*kind, version, plaintext.bytes.size());
    ByteVector bytes = plaintext.bytes;
    std::copy(header.begin(), header.end(), bytes.begin());
    std::optional<Document> document = ReadWhole(bytes, name);
    kit::Wipe(bytes);
    if (document) return document;
  }
  return std::nullopt;
}

/// What came back of a document that is whole.
Rescued WholeOf(Document document, bool vouched) {
  RescueReport report;
  SummariseSongs(document, [&](const SongSummary& song) {
    report.songs.push_back({song.number, song.name, {}, SongState::kWhole, {}, vouched});
  });
  return {std::move(document), std::move(report)};
}

Rescued Recover(const Plaintext& plaintext, const std::string& name) {
  if (auto document = ReadWhole(plaintext.bytes, name)) {
    const bool vouched = plaintext.authentic || HasChecksum(document->type().version);
    // The reader of legacy files overlooks most lengths that are damaged.
    if (vouched || !document->type().is_legacy()) {
      Rescued rescued = WholeOf(std::move(*document), vouched);
      rescued.report.changed = plaintext.changed && !vouched;
      return rescued;
    }
  } else if (auto repaired = ReadWithHeader(plaintext, name)) {
    Rescued rescued = WholeOf(std::move(*repaired), true);
    rescued.report.remarks.emplace_back("the header of its content is damaged");
    return rescued;
  }
  Salvage salvage = SalvageAny(AsText(plaintext.bytes));
  const bool has_checksum = HasChecksum(salvage.version);
  const bool vouched = plaintext.authentic && !has_checksum;  // which would be right otherwise
  for (RescuedSong& song : salvage.report.songs) {
    song.vouched = vouched && song.state == SongState::kWhole && song.remarks.empty();
  }
  Rescued rescued{Document(std::move(salvage.model), salvage.version, name), std::move(salvage.report)};
  RescueReport& report = rescued.report;
  report.changed = plaintext.changed;
  if (has_checksum) {
    report.changed = true;
    report.remarks.emplace_back("its checksum is wrong or missing");
  }
  if (report.saved() > report.stated_songs.value_or(report.saved())) {
    report.remarks.push_back("its count of songs is wrong (" + std::to_string(*report.stated_songs) + ")");
  }
  return rescued;
}

/// The bytes of a file of `document`, encrypted with an empty key.
ByteVector Written(const Document& document) {
  const auto stream = CipherStreamOf(document, {});
  return stream->GetEncryptedBytes();
}

/// Throws Error where `document` is not read back as what is written of it.
void RequireReadsBack(const Document& document) {
  const ByteVector written = Written(document);
  OpenedFile file = OpenedFile::FromBytes(written, document.name(), {});
  if (Written(ReadDocument(file)) == written) return;
  throw Error(ErrorCode::kInternal, "", "what is left of it would not read back as it is written",
              "please report it");
}

}  // namespace

Rescued Rescue(std::span<const std::uint8_t> bytes, const std::string& name, const CipherKey& key,
               Accept accept) {
  return OnFile(name, [&] {
    Plaintext plaintext = DecryptDamaged(bytes, key, accept);
    Rescued rescued = Recover(plaintext, name);
    std::vector<std::string>& remarks = rescued.report.remarks;
    remarks.insert(remarks.begin(), plaintext.remarks.begin(), plaintext.remarks.end());
    if (rescued.report.saved() == 0 && !rescued.report.complete()) {
      throw Error(ErrorCode::kNothingToSave, "", "holds no song that can be read",
                  "get another copy of the file");
    }
    RequireReadsBack(rescued.document);
    return rescued;
  });
}

}  // namespace zuna_toolkit
