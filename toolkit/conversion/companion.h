// What a legacy file does not hold itself: a show has no name, the songs of a log have no divisions.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "cmn/file_format.h"
#include "kit/api.h"
#include "kit/numeric_string_compare.h"
#include "toolkit/document/document.h"
#include "toolkit/document/open.h"

namespace zuna_toolkit {

/// What a document tells its companion: a log its show's name, a show its songs' divisions.
struct Companion {
  /// A song of it.
  struct Song {
    std::string name;                       ///< the title
    std::optional<std::uint16_t> division;  ///< ticks of a quarter note; a legacy log has none
    std::uint32_t length = 0;               ///< ticks
  };
  /// By song number.
  using Songs = std::map<std::string, Song, kit::NumericStringCompare>;

  std::string name;            ///< what messages call it
  std::string show_name;       ///< empty for a legacy show
  Songs songs;                 ///< of a show or a log
  std::uint16_t division = 0;  ///< of the songs that it has none for; ticks of a quarter note
};

/// What `document` tells as a companion.
ZUNA_API Companion CompanionFrom(const Document& document);

/// Reads the companion of a show or a log (`kind`), of any version: that of a show is a log, that of a log is
/// a show. Throws Error (kWrongCompanion) for the other kind, and what ReadDocument() throws.
ZUNA_API Companion ReadCompanion(OpenedFile& file, cmn::FileKind kind);

/// How well a companion fits a document.
struct CompanionFit {
  /// A song that both have, in different ways.
  struct OtherSong {
    std::string number;                  ///< in both
    std::string name;                    ///< in the document
    std::string companion_name;          ///< in the companion
    std::uint32_t length = 0;            ///< in the document, in ticks
    std::uint32_t companion_length = 0;  ///< in the companion, in ticks
  };

  /// A song agrees in number and name. A document without songs fits every companion, and a log without
  /// songs every show.
  bool belongs = true;
  std::vector<std::string> unknown_songs;  ///< numbers of the document that the companion lacks
  std::vector<OtherSong> other_songs;      ///< of another name or length
  /// It belongs and has the same name of the show, or for a log the same divisions: `up` brings back what a
  /// current document loses as a legacy one.
  bool restores = false;
};

/// Compares the songs of both.
ZUNA_API CompanionFit FitOf(const Document& document, const Companion& companion);

}  // namespace zuna_toolkit
