// Finds out whether one plaintext holds two documents, one after the other (docs/damaged-files.md).
#include "toolkit/rescue/internal/joined.h"

#include <algorithm>
#include <set>
#include <string>

#include "format_converter/version0/containers/change_log_header.h"
#include "toolkit/rescue/internal/current_header.h"
#include "toolkit/rescue/internal/salvage.h"

namespace zuna_toolkit {

namespace {

constexpr std::string_view kWhiteSpace = " \t\r\n";
constexpr std::size_t kMostPlaces = 4;  // of one mark, each of which is tried

/// Adds the first places of `mark` after the beginning.
void AddMarks(std::set<std::size_t>& places, std::string_view plaintext, std::string_view mark) {
  std::size_t at = plaintext.find(mark, 1);
  for (std::size_t i = 0; i < kMostPlaces && at != std::string_view::npos; ++i) {
    places.insert(at);
    at = plaintext.find(mark, at + 1);
  }
}

/// Adds the first places after the beginning at which a text form may begin.
void AddTexts(std::set<std::size_t>& places, std::string_view plaintext) {
  std::size_t key = plaintext.find(kKindKey);
  for (std::size_t i = 0; i < kMostPlaces && key != std::string_view::npos; ++i) {
    const std::size_t brace = key == 0 ? 0 : plaintext.find_last_not_of(kWhiteSpace, key - 1);
    if (brace != std::string_view::npos && brace > 0 && plaintext[brace] == cmn::kTextFormStart) {
      places.insert(brace);
    }
    key = plaintext.find(kKindKey, key + 1);
  }
}

/// Where the document at the beginning ends, as it tells itself; none where it does not.
std::optional<std::size_t> StatedEnd(std::string_view plaintext) {
  if (plaintext.starts_with(cmn::kTextFormStart)) return EndOfObject(plaintext, 0, plaintext.size());
  if (BinaryKind(plaintext)) return static_cast<std::size_t>(StatedSize(plaintext));
  return std::nullopt;
}

}  // namespace

std::optional<std::size_t> BeginOfSecond(std::string_view plaintext,
                                         const std::function<bool(std::string_view)>& is_document) {
  std::set<std::size_t> marked;
  for (const cmn::FileKind kind : {cmn::FileKind::kShow, cmn::FileKind::kLog}) {
    AddMarks(marked, plaintext, cmn::BinaryMagic(kind));
  }
  if (!plaintext.starts_with(version0::kChangeLogMagic)) {
    AddMarks(marked, plaintext, version0::kChangeLogMagic);
  }
  AddTexts(marked, plaintext);
  std::set<std::size_t> places = marked;
  if (const auto end = StatedEnd(plaintext)) {
    const std::size_t begin = std::min(plaintext.find_first_not_of(kWhiteSpace, *end), plaintext.size());
    places.insert({*end, begin});
  }
  for (const std::size_t place : places) {
    if (place >= plaintext.size()) break;
    if (is_document(plaintext.substr(place))) return place;
    if (marked.contains(place) && is_document(plaintext.substr(0, place))) return place;
  }
  return std::nullopt;
}

bool AreOfOneForm(std::string_view plaintext, std::size_t second) {
  const std::string_view other = plaintext.substr(second);
  const auto kind = BinaryKind(plaintext);
  if (!kind || BinaryKind(other) != kind) return false;
  return StatedVersion(plaintext) == StatedVersion(other);
}

}  // namespace zuna_toolkit
