// What can still be read of a damaged file: decrypts it, finds out what it was, and looks whether the rest is
// a document (docs/damaged-files.md).
#include "toolkit/rescue/rescue.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "toolkit/document/text_form.h"
#include "toolkit/document/write.h"
#include "toolkit/error.h"
#include "toolkit/internal/translate.h"
#include "toolkit/rescue/internal/current_events.h"
#include "toolkit/rescue/internal/current_header.h"
#include "toolkit/rescue/internal/joined.h"
#include "toolkit/rescue/internal/merged.h"
#include "toolkit/rescue/internal/plaintext.h"
#include "toolkit/rescue/internal/salvage.h"
#include "toolkit/rescue/internal/whole_document.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

constexpr const char* kWrongChecksum = "its checksum is wrong or missing";

/// Throws that nothing came back. A text that is not encrypted can be corrected by hand.
[[noreturn]] void ThrowNothingToSave(const Plaintext& plaintext, const std::string& name) {
  if (!plaintext.others.places.empty()) ThrowBeginsLater(plaintext.others.places.front());
  const bool states_version = AsText(plaintext.bytes).find("\"fileVersion\"") != std::string_view::npos;
  if (!plaintext.encrypted && states_version) ReadTextForm(AsText(plaintext.bytes), name);
  throw Error(ErrorCode::kNothingToSave, "", "holds no song that can be read",
              plaintext.encrypted
                  ? "get another copy of the file"
                  : "give its key if it is encrypted with another one, or get another copy of the file");
}

/// What is left of a plaintext that its own readers refuse, and of a legacy one, whose readers overlook most
/// damage.
Rescued SalvageFrom(const Plaintext& plaintext, const std::string& name, bool is_read) {
  Salvage salvage = SalvageAny(AsText(plaintext.bytes));
  RescueReport& report = salvage.report;
  CloseReport(report, plaintext.bytes.size(), std::max(plaintext.missing_bytes, salvage.missing_bytes));
  report.changed = report.changed || plaintext.changed;
  if (const auto unknown = UnknownVersion(AsText(plaintext.bytes))) {
    report.remarks.push_back("states version " + cmn::VersionText(*unknown) +
                             ", which this release does not know; it is read as version " +
                             cmn::VersionText(salvage.version));
  } else if (salvage.wants_checksum) {
    report.changed = true;
    report.remarks.emplace_back(kWrongChecksum);
  } else if (!is_read && report.complete() && report.remarks.empty()) {
    report.changed = true;
    report.remarks.emplace_back("its first bytes, lengths or counts are wrong, and are made anew");
  }
  const bool vouched = plaintext.authentic && is_read && report.complete() && report.remarks.empty();
  for (RescuedSong& song : report.songs) song.vouched = vouched;
  if (report.saved() == 0 && !(is_read && report.complete())) ThrowNothingToSave(plaintext, name);
  return {Document(std::move(salvage.model), salvage.version, name), std::move(report)};
}

/// The bytes of `plaintext` from `begin` to `end`.
Plaintext PartOf(const Plaintext& plaintext, std::size_t begin, std::size_t end) {
  Plaintext part;
  part.bytes.assign(plaintext.bytes.begin() + static_cast<std::ptrdiff_t>(begin),
                    plaintext.bytes.begin() + static_cast<std::ptrdiff_t>(end));
  part.encrypted = plaintext.encrypted;
  part.authentic = plaintext.authentic;
  part.changed = plaintext.changed;
  return part;
}

Rescued RecoverOne(const Plaintext& plaintext, const std::string& name, std::optional<Document> document);

/// The document that ends where the header of `plaintext` states, before other bytes; none where it is not
/// whole there.
std::optional<Rescued> RecoverStated(const Plaintext& plaintext, const std::string& name) {
  if (!BinaryKind(AsText(plaintext.bytes))) return std::nullopt;
  const std::size_t size = plaintext.bytes.size();
  const std::uint64_t stated = StatedSize(AsText(plaintext.bytes));
  if (stated >= size) return std::nullopt;
  try {
    const Plaintext part = PartOf(plaintext, 0, static_cast<std::size_t>(stated));
    Rescued rescued = RecoverOne(part, name, ReadWhole(part.bytes, name));
    if (!HasEverySong(rescued.report)) return std::nullopt;
    rescued.report.remarks.push_back(LengthRemark(size, stated));
    rescued.report.unread.push_back({stated, size});
    return rescued;
  } catch (const Error&) {
    return std::nullopt;
  }
}

Rescued RecoverOne(const Plaintext& plaintext, const std::string& name, std::optional<Document> document) {
  if (document && !document->type().is_legacy()) {
    const bool vouched = plaintext.authentic || HasChecksum(document->type().version);
    Rescued rescued = WholeOf(std::move(*document), vouched);
    rescued.report.changed = plaintext.changed && !vouched;
    return rescued;
  }
  if (!document) {
    if (auto other = ReadInOtherForm(plaintext, name)) return std::move(*other);
    if (auto stated = RecoverStated(plaintext, name)) return std::move(*stated);
  }
  return SalvageFrom(plaintext, name, document.has_value());
}

/// The same of the document between `begin` and `end`.
Rescued RecoverPart(const Plaintext& plaintext, const std::string& name, std::size_t begin, std::size_t end) {
  const Plaintext part = PartOf(plaintext, begin, end);
  return RecoverOne(part, name, ReadWhole(part.bytes, name));
}

/// Whether two documents can be one: of current versions, and both shows or both logs.
bool CanBeOne(const FileType& a, const FileType& b) {
  return a.kind == b.kind && !a.is_legacy() && !b.is_legacy();
}

/// Tells that nothing comes back of the document between `begin` and `end`.
void LosePart(RescueReport& report, std::size_t begin, std::size_t end) {
  report.missing.push_back(DocumentText(begin) + " of the content");
  report.unread.push_back({begin, end});
}

/// Adds the document between `begin` and `end` to `parts`, or tells in `report` that nothing of it comes
/// back.
void AddPart(std::vector<JoinedPart>& parts, RescueReport& report, const Plaintext& plaintext,
             std::size_t begin, std::size_t end) {
  const Document& first = parts.front().rescued.document;
  try {
    Rescued part = RecoverPart(plaintext, first.name(), begin, end);
    if (CanBeOne(part.document.type(), first.type())) return parts.push_back({begin, std::move(part)});
  } catch (const Error&) {
    // The other documents come back.
  }
  LosePart(report, begin, end);
}

/// What is left of the documents of `plaintext`, the second of which begins at `second`: of the first one,
/// and of those of its kind and version 1.x.
Rescued RecoverJoined(const Plaintext& plaintext, const std::string& name, std::size_t second) {
  std::vector<JoinedPart> parts;
  parts.push_back({0, RecoverPart(plaintext, name, 0, second)});
  RescueReport lost;
  std::vector<std::size_t> begins = BeginsOfOneForm(AsText(plaintext.bytes), second);
  const std::size_t count = std::max<std::size_t>(begins.size(), 1) + 1;
  if (begins.empty()) LosePart(lost, second, plaintext.bytes.size());
  begins.push_back(plaintext.bytes.size());
  for (std::size_t i = 0; i + 1 < begins.size(); ++i) {
    AddPart(parts, lost, plaintext, begins[i], begins[i + 1]);
  }
  Rescued rescued = parts.size() == 1 ? std::move(parts.front().rescued) : Merged(std::move(parts));
  RescueReport& report = rescued.report;
  const std::string who = count == 2 ? "two documents are joined: another"
                                     : std::to_string(count) + " documents are joined: the second";
  report.remarks.insert(report.remarks.begin(), who + " one begins at byte " + std::to_string(second));
  report.missing.insert(report.missing.end(), lost.missing.begin(), lost.missing.end());
  report.unread.insert(report.unread.end(), lost.unread.begin(), lost.unread.end());
  return rescued;
}

Rescued Recover(const Plaintext& plaintext, const std::string& name) {
  auto document = ReadWhole(plaintext.bytes, name);
  if (!document || document->type().is_legacy()) {
    try {
      const auto second = BeginOfSecond(AsText(plaintext.bytes), IsDocument);
      if (second) return RecoverJoined(plaintext, name, *second);
    } catch (const Error&) {
      // Nothing is left of the first one; songs of the second one may be found.
    }
  }
  return RecoverOne(plaintext, name, std::move(document));
}

/// Tells what of the file is not in `plaintext`: what follows it in `bytes`. In a file that is not encrypted
/// it counts as unread.
void AddWhatFollows(RescueReport& report, const Plaintext& plaintext, std::span<const std::uint8_t> bytes) {
  const std::string_view tail = AsText(bytes.subspan(plaintext.end, plaintext.tail_end - plaintext.end));
  if (!IsPadding(tail)) {
    const auto begin = BeginOfDocument(tail, IsDocument);
    report.missing.push_back(
        begin ? "the document that begins at byte " + std::to_string(plaintext.end + *begin) + " of the file"
              : "the " + Counted(tail.size(), "byte", "bytes") + " after its encrypted bytes");
  }
  for (const std::size_t place : plaintext.others.places) {
    report.missing.push_back("the encrypted file that begins at byte " + std::to_string(place) +
                             " of this one (tail -c +" + std::to_string(place + 1) + " takes it)");
  }
  if (plaintext.others.more > 0) {
    report.missing.push_back("the rest of the file, with " +
                             Counted(plaintext.others.more, "more encrypted file", "more encrypted files"));
  }
  if (!plaintext.encrypted && plaintext.tail_end < bytes.size()) {
    report.unread.push_back({plaintext.tail_end, bytes.size()});
  }
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
    JudgeEvents(rescued);
    RescueReport& report = rescued.report;
    report.remarks.insert(report.remarks.begin(), plaintext.remarks.begin(), plaintext.remarks.end());
    AddWhatFollows(report, plaintext, bytes);
    RequireReadsBack(rescued.document);
    return rescued;
  });
}

}  // namespace zuna_toolkit
