// Plaintexts that are whole documents, or would be with another header.
#include "toolkit/rescue/internal/whole_document.h"

#include <algorithm>
#include <utility>

#include "kit/wipe.h"
#include "toolkit/document/summary.h"
#include "toolkit/document/text_form.h"
#include "toolkit/error.h"
#include "toolkit/rescue/internal/current_header.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

/// The document that `plaintext` would be with another header, if its checksum vouches for that.
std::optional<Document> ReadWithHeader(const Plaintext& plaintext, const std::string& name) {
  const auto kind = BinaryKind(AsText(plaintext.bytes));
  if (!kind) return std::nullopt;
  for (const cmn::FileVersion& version : cmn::SupportedVersions(*kind)) {
    if (!HasChecksum(version)) continue;
    const std::string header = HeaderBytes(*kind, version, plaintext.bytes.size());
    ByteVector bytes = plaintext.bytes;
    std::copy(header.begin(), header.end(), bytes.begin());
    std::optional<Document> document = ReadWhole(bytes, name);
    kit::Wipe(bytes);
    if (document) return document;
  }
  return std::nullopt;
}

/// The text form `plaintext` of any version, if it is one.
std::optional<Document> ReadText(std::string_view plaintext, const std::string& name) {
  if (!plaintext.starts_with(cmn::kTextFormStart)) return std::nullopt;
  try {
    return ReadTextForm(plaintext, name);
  } catch (const Error&) {
    return std::nullopt;
  }
}

}  // namespace

std::optional<Document> ReadWhole(const ByteVector& plaintext, const std::string& name) {
  try {
    OpenedFile file = OpenedFile::FromBytes(plaintext, name, {}, Accept::kEncryptedOrPlain);
    return ReadDocument(file);
  } catch (const Error&) {
    return std::nullopt;
  }
}

Rescued WholeOf(Document document, bool vouched) {
  RescueReport report;
  SummariseSongs(document, [&](const SongSummary& song) {
    report.songs.push_back({song.number, song.name, {}, {}, SongState::kWhole, {}, vouched});
  });
  report.known_songs = report.songs.size();
  if (document.type().version.major == 1) report.stated_songs = report.known_songs;
  return {std::move(document), std::move(report)};
}

std::optional<Rescued> ReadInOtherForm(const Plaintext& plaintext, const std::string& name) {
  if (auto repaired = ReadWithHeader(plaintext, name)) {
    Rescued rescued = WholeOf(std::move(*repaired), true);
    rescued.report.remarks.emplace_back("the header of its content is damaged");
    return rescued;
  }
  auto text = ReadText(AsText(plaintext.bytes), name);
  if (!text) return std::nullopt;
  Rescued rescued = WholeOf(std::move(*text), plaintext.authentic);
  rescued.report.stated_songs.reset();
  return rescued;
}

bool IsDocument(std::string_view plaintext) {
  ByteVector bytes(plaintext.begin(), plaintext.end());
  auto document = ReadWhole(bytes, "");
  kit::Wipe(bytes);
  if (!document) document = ReadText(plaintext, "");
  return document && WholeOf(*document, false).report.saved() > 0;
}

bool HasEverySong(const RescueReport& report) {
  const bool all_whole = std::all_of(report.songs.begin(), report.songs.end(),
                                     [](const RescuedSong& song) { return song.state == SongState::kWhole; });
  return all_whole && report.missing.empty() && report.unread.empty() &&
         report.stated_songs == report.saved();
}

}  // namespace zuna_toolkit
