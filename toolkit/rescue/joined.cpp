// Finds out whether one plaintext holds two documents, one after the other (docs/damaged-files.md).
#include "toolkit/rescue/internal/joined.h"

#include <algorithm>
#include <set>
#include <string>

#include "format_converter/version0/containers/change_log_header.h"
#include "toolkit/rescue/internal/current_header.h"
#include "toolkit/rescue/internal/legacy_log_head.h"
#include "toolkit/rescue/internal/salvage.h"

namespace zuna_toolkit {

namespace {

constexpr std::string_view kWhiteSpace = " \t\r\n";
constexpr std::string_view kPadding{"\0 \t\r\n", 5};
constexpr std::size_t kMostPlaces = 4;  // of one mark, each of which is tried

/// Adds the first places of `mark` from `from` on.
void AddMarks(std::set<std::size_t>& places, std::string_view plaintext, std::size_t from,
              std::string_view mark) {
  std::size_t at = plaintext.find(mark, from);
  for (std::size_t i = 0; i < kMostPlaces && at != std::string_view::npos; ++i) {
    places.insert(at);
    at = plaintext.find(mark, at + 1);
  }
}

/// Adds the first places from `from` on at which a text form may begin.
void AddTexts(std::set<std::size_t>& places, std::string_view plaintext, std::size_t from) {
  std::size_t key = plaintext.find(kKindKey);
  for (std::size_t i = 0; i < kMostPlaces && key != std::string_view::npos; ++i) {
    const std::size_t brace = key == 0 ? 0 : plaintext.find_last_not_of(kWhiteSpace, key - 1);
    if (brace != std::string_view::npos && brace >= from && plaintext[brace] == cmn::kTextFormStart) {
      places.insert(brace);
    }
    key = plaintext.find(kKindKey, key + 1);
  }
}

/// The first places of every mark from `from` on.
std::set<std::size_t> MarksFrom(std::string_view plaintext, std::size_t from) {
  std::set<std::size_t> places;
  for (const cmn::FileKind kind : {cmn::FileKind::kShow, cmn::FileKind::kLog}) {
    AddMarks(places, plaintext, from, cmn::BinaryMagic(kind));
  }
  if (from == 0 || !plaintext.starts_with(version0::kChangeLogMagic)) {
    AddMarks(places, plaintext, from, version0::kChangeLogMagic);
  }
  AddTexts(places, plaintext, from);
  return places;
}

/// Where the document at the beginning ends, as it tells itself; none where it does not, and where a legacy
/// log follows another one.
std::optional<std::size_t> StatedEnd(std::string_view plaintext) {
  if (plaintext.starts_with(version0::kChangeLogMagic)) {
    const auto end = static_cast<std::size_t>(StatedLogEnd(plaintext));
    if (end == 0 || end >= plaintext.size()) return std::nullopt;
    const bool is_log = plaintext.substr(end).starts_with(version0::kChangeLogMagic);
    return is_log ? std::nullopt : std::optional(end);
  }
  if (plaintext.starts_with(cmn::kTextFormStart)) return EndOfObject(plaintext, 0, plaintext.size());
  if (BinaryKind(plaintext)) return static_cast<std::size_t>(StatedSize(plaintext));
  return std::nullopt;
}

}  // namespace

std::optional<std::size_t> BeginOfSecond(std::string_view plaintext,
                                         const std::function<bool(std::string_view)>& is_document) {
  const std::set<std::size_t> marked = MarksFrom(plaintext, 1);
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

bool IsPadding(std::string_view tail) { return tail.find_first_not_of(kPadding) == std::string_view::npos; }

std::optional<std::size_t> BeginOfDocument(std::string_view tail,
                                           const std::function<bool(std::string_view)>& is_document) {
  if (IsPadding(tail)) return std::nullopt;
  const std::size_t begin = tail.find_first_not_of(kPadding);
  if (is_document(tail.substr(begin))) return begin;
  const std::set<std::size_t> marked = MarksFrom(tail, 0);
  return marked.empty() ? std::nullopt : std::optional(*marked.begin());
}

std::vector<std::size_t> BeginsOfOneForm(std::string_view plaintext, std::size_t second) {
  std::vector<std::size_t> begins;
  const auto kind = BinaryKind(plaintext);
  if (!kind) return begins;
  std::uint64_t at = second;
  while (at < plaintext.size()) {
    const std::string_view other = plaintext.substr(static_cast<std::size_t>(at));
    if (BinaryKind(other) != kind || StatedVersion(other) != StatedVersion(plaintext)) break;
    begins.push_back(static_cast<std::size_t>(at));
    at += StatedSize(other);
  }
  return begins;
}

}  // namespace zuna_toolkit
