#pragma once

// The versions of current files, and what is in a file of each (docs/format-1.md, docs/format-2.md).

#include <array>
#include <cstdint>
#include <string_view>

#include "cmn/data_error.h"
#include "cmn/file_format.h"

namespace zuna_core {

using cmn::FileKind;

/// How a file holds its fields: binary, with numbers at their full width; binary and compact, where numbers
/// of more than a byte are variable-length integers and positions are differences; or as text.
enum class Layout : std::uint8_t { kFixed, kCompact, kText };

/// What a version is.
struct VersionTraits {
  cmn::FileVersion version;
  Layout layout;
  bool checksum;  ///< whether the file ends with one
  bool in_shows;
  bool in_logs;
};

inline constexpr cmn::FileVersion kTextVersion{2, 0};  ///< the version that the text form states

/// Every version, in ascending order. All that depends on the version of a file is decided by this table.
inline constexpr std::array<VersionTraits, 4> kVersions{{
    // version, layout, checksum, in shows, in logs
    {{1, 0}, Layout::kFixed, false, true, false},
    {{1, 1}, Layout::kFixed, true, true, true},
    {{1, 2}, Layout::kCompact, true, true, true},
    {kTextVersion, Layout::kText, false, true, true},
}};

/// The layout of a version. Throws std::invalid_argument for one that is not in the table.
Layout LayoutOf(cmn::FileVersion version);

/// Whether a file of this version ends with a checksum. Throws std::invalid_argument for one that is not in
/// the table.
bool HasChecksum(cmn::FileVersion version);

/// Whether files of this kind have this version and are binary.
bool IsBinary(FileKind kind, cmn::FileVersion version);

/// Throws std::invalid_argument: the text form has no binary fields.
[[noreturn]] void ThrowNotBinary(cmn::FileVersion version);

/// Throws cmn::UnsupportedVersionError, listing the supported versions. `where` completes the message: "for
/// output". The field and the offset are those of `place`.
[[noreturn]] void ThrowUnsupported(FileKind kind, cmn::FileVersion version, const char* where,
                                   cmn::DataError::Parts place = {});

/// What is wrong with the value of "kind" in the text form; null where nothing is.
const char* CheckKind(FileKind kind, std::string_view text);

}  // namespace zuna_core
