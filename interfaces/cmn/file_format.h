#pragma once

// Kinds, versions and magic bytes of current files. Not part of the contract with the converter: a
// product that replaces platform/ for the converter alone need not supply it.

#include <algorithm>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "cmn/file_version.h"
#include "kit/api.h"

namespace cmn {

/// What a file holds.
enum class FileKind : std::uint8_t { kShow, kLog };

/// The version that files are written in unless another one is asked for.
inline constexpr FileVersion kDefaultVersion{1, 2};

/// "show" or "log", for messages.
ZUNA_API std::string_view KindName(FileKind kind);

/// "showdata" or "logdata": the value of "kind" in the text form.
ZUNA_API std::string_view KindText(FileKind kind);

/// The four bytes that a current binary file of this kind begins with.
ZUNA_API std::string_view BinaryMagic(FileKind kind);

/// The current versions that files of this kind are read and written in, in ascending order. 0.0, the legacy
/// format, is not among them.
ZUNA_API std::span<const FileVersion> SupportedVersions(FileKind kind);

/// Whether `version` is one of them.
inline bool IsSupported(FileKind kind, FileVersion version) {
  const auto versions = SupportedVersions(kind);
  return std::find(versions.begin(), versions.end(), version) != versions.end();
}

/// The version that `text` states as MAJOR.MINOR: two decimal numbers from 0 to 255 without leading zeros.
/// None for any other text.
ZUNA_API std::optional<FileVersion> ParseVersion(std::string_view text);

/// A version as text: "1.2".
ZUNA_API std::string VersionText(FileVersion version);

/// The values of "kind" and "fileVersion" in a text form, in whatever order its keys stand: at most 16 bytes
/// of each, none where it is not there.
struct StatedType {
  std::optional<std::string> kind;     ///< KindText() of a show or log, or something else
  std::optional<std::string> version;  ///< what ParseVersion() reads, or something else
};

/// What the text form states that is at the position of the stream. Reads no further than needed, in constant
/// memory. Throws DataError where the stream cannot be read.
ZUNA_API StatedType StatedInText(std::istream& is);

}  // namespace cmn
