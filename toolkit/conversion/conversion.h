// Conversion of documents between format 0.0 and the current versions (docs/conversion.md).
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "cmn/file_version.h"
#include "kit/api.h"
#include "kit/numeric_string_compare.h"
#include "toolkit/document/document.h"
#include "toolkit/document/open.h"

namespace zuna_toolkit {

/// What a legacy file does not hold itself: a show has no name, the songs of a log have no divisions.
struct Companion {
  /// A song of the companion of a log.
  struct Song {
    std::string name;            ///< the title
    std::uint16_t division = 0;  ///< ticks of a quarter note
  };
  /// By song number.
  using Songs = std::map<std::string, Song, kit::NumericStringCompare>;

  std::string name;       ///< what messages call it
  std::string show_name;  ///< for a show
  Songs songs;            ///< for a log
};

/// What `document` tells as a companion: a log its show's name, a show its songs.
ZUNA_API Companion CompanionFrom(const Document& document);

/// Reads a legacy log as the companion of its show: its header tells the show's name. The rest is not read.
/// Throws Error (kBadInput) where `file` is no legacy log.
ZUNA_API Companion ReadLogAsCompanion(OpenedFile& file);

/// Reads a legacy show as the companion of its log: its songs tell the divisions. Throws Error (kBadInput)
/// where `file` is no legacy show.
ZUNA_API Companion ReadShowAsCompanion(OpenedFile& file);

/// A legacy document at a current version.
struct UpResult {
  /// A song whose name in the companion is another one.
  struct RenamedSong {
    std::string number;          ///< in both
    std::string name;            ///< in the document
    std::string companion_name;  ///< in the companion
  };

  Document document;  ///< at the current version
  std::vector<std::string>
      unknown_songs;  ///< of a log: numbers that the companion lacks; their division is 0
  std::vector<RenamedSong> renamed_songs;  ///< of a log
};

/// Brings a legacy document to a current version. Throws Error: kNoSuchVersion for a version that is not
/// written; kBadInput for a document of a current version, for a song that cannot be converted, and for a
/// companion that has none of a log's songs.
ZUNA_API UpResult Up(const Document& legacy, const Companion& companion, cmn::FileVersion version);

/// Brings a document of a current version to version 0.0. Throws Error (kBadInput) for a legacy document and
/// for one that format 0.0 cannot hold: a text of more than 255 bytes, more than 255 songs or 239 voices
/// besides drums, a song without messages or without a tempo at its first meter.
ZUNA_API Document Down(const Document& current);

/// A document of a current version at another one. Throws Error: kNoSuchVersion for a version that is not
/// written, kBadInput for a legacy document.
ZUNA_API Document Convert(const Document& current, cmn::FileVersion version);

/// The document in its current form, which a legacy one gets without a companion: a show has no name, the
/// songs of a log have no divisions. Throws Error (kBadInput) for a song that cannot be converted.
ZUNA_API Document CurrentForm(const Document& document);

}  // namespace zuna_toolkit
