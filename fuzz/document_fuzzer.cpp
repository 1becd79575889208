// The input: a file of any kind and version, plain or encrypted with an empty key. Whatever it is, opening it
// gives a document or a zuna_toolkit::Error; what there is to tell about a document is short; and a document
// is written as a file that holds the same. A check of it finds at most a few things for each byte, and a
// page of it is bounded. Each byte of the plaintext is in one field.

#include "cli/shared/document_text.h"
#include "fuzz/documents.h"
#include "fuzz/target.h"
#include "toolkit/checking/checking.h"
#include "toolkit/conversion/companion.h"
#include "toolkit/document/field_list.h"
#include "toolkit/document/text_form.h"
#include "toolkit/view/page.h"

namespace {

using zuna_toolkit::Expected;

/// Calls a reader, which may refuse the input.
template <typename Read>
void Try(const char* step, const std::string& bytes, Read read) {
  try {
    fuzz::OpenedFile file = fuzz::Open(bytes);
    const fuzz::MemoryBound bound(step, fuzz::HeapBound(bytes.size()));
    read(file);
  } catch (const zuna_toolkit::Error&) {
    return;
  }
}

void CallEveryReader(const std::string& bytes) {
  for (const Expected expected : {Expected::kShow, Expected::kLegacy, Expected::kCurrent}) {
    Try("reading an expected document", bytes,
        [&](auto& file) { zuna_toolkit::ReadDocument(file, expected); });
  }
  Try("detecting", bytes, [](auto& file) { zuna_toolkit::Detect(file); });
  for (const cmn::FileKind kind : {cmn::FileKind::kShow, cmn::FileKind::kLog}) {
    Try("reading a companion", bytes, [&](auto& file) { zuna_toolkit::ReadCompanion(file, kind); });
  }
  Try("checking a text", bytes, [&](auto& file) {
    zuna_toolkit::RequireCorrectText({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()},
                                     file.name());
  });
}

void CheckTexts(const fuzz::Document& document, std::size_t size) {
  fuzz::RequireShort(fuzz::Bounded("info", size, [&] { return zuna_cli::InfoText(document, true); }), size);
  fuzz::RequireShort(fuzz::Bounded("info as JSON", size,
                                   [&] { return zuna_cli::InfoJson(document, document.name(), true); }),
                     size);
  fuzz::RequireShort(zuna_cli::CountsText(document), size);
}

void CheckWriter(const fuzz::Document& document, std::size_t size) {
  std::string written;
  try {
    written = fuzz::Bounded("writing a document", size, [&] { return fuzz::Written(document); });
  } catch (const zuna_toolkit::Error&) {
    fuzz::Require(document.type().is_legacy(), "a current document can be written");
    return;  // a legacy song without events
  }
  const auto again = fuzz::ReadDocument(written);
  fuzz::Require(again.has_value(), "a written document is read");
  fuzz::Require(again->type() == document.type(), "a written document has the type of the first one");
  fuzz::Require(fuzz::Written(*again) == written, "a written document is written again as the same bytes");
}

/// Any content can be checked.
void CheckContent(const fuzz::Document& document, std::size_t size) {
  constexpr std::size_t kMostOfARecord = 8;  // findings; a song without anything has several
  std::size_t findings = 0;
  fuzz::Bounded("check", size, [&] {
    zuna_toolkit::Check(document, [&](const zuna_toolkit::Finding& finding) {
      fuzz::Require(!finding.problem.empty() && !finding.remedy.empty(), "a finding says what to do");
      ++findings;
    });
  });
  fuzz::Require(findings <= kMostOfARecord * (size + 1), "there are few findings for each byte");
}

/// A page of a show is bounded.
void CheckPage(const fuzz::Document& document, std::size_t size) {
  if (document.type().is_log()) return;
  constexpr std::size_t kFixed = std::size_t{4} << 20;  // bytes
  try {
    const fuzz::MemoryBound bound("view", fuzz::CommandHeapBound(size) + 4 * kFixed);
    const std::string page = zuna_toolkit::ShowPage(document);
    fuzz::Require(page.size() <= kFixed + 64 * size, "a page takes few bytes for a byte of the show");
    zuna_toolkit::PageContent compared;
    compared.earlier_show = &document;
    fuzz::Require(
        zuna_toolkit::ShowPage(document, compared).find(R"(<details class="changes")") == std::string::npos,
        "a show has not changed since itself");
  } catch (const zuna_toolkit::Error&) {
    fuzz::Require(document.type().is_legacy(), "a current show can be drawn");
  }
}

/// Each byte is in one field, whether the file can be read or not.
void CheckFields(const std::string& bytes) {
  Try("listing fields", bytes, [](auto& file) {
    const zuna_toolkit::FieldSource source = zuna_toolkit::FieldSourceOf(file);
    std::uint64_t end = 0;
    bool is_read = true;
    zuna_toolkit::ListFields(source, [&](const cmn::PlacedField& field) {
      fuzz::Require(field.begin == end && field.begin < field.end, "fields follow one another");
      end = field.end;
      is_read = field.key != "unread";
    });
    fuzz::Require(end == source.plaintext.size(), "the last field ends with the file");
    fuzz::Require(is_read || source.damage, "a file that can be read has no unread bytes");
  });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  CallEveryReader(bytes);
  CheckFields(bytes);
  const auto document = fuzz::ReadDocument(bytes);
  if (!document) return 0;
  CheckTexts(*document, size);
  CheckContent(*document, size);
  CheckPage(*document, size);
  CheckWriter(*document, size);
  return 0;
}
