#pragma once

// The versions of current files, and what each of them is (docs/format-1.md, docs/format-2.md).

#include <string_view>

#include "cmn/file_format.h"

namespace zuna_core {

using cmn::FileKind;

inline constexpr cmn::FileVersion kFixedVersion{1, 0};    ///< binary, without a checksum
inline constexpr cmn::FileVersion kCheckedVersion{1, 1};  ///< binary
inline constexpr cmn::FileVersion kCompactVersion{1, 2};  ///< binary
inline constexpr cmn::FileVersion kTextVersion{2, 0};     ///< the text form

/// Whether files of this kind have this version.
bool IsSupported(FileKind kind, cmn::FileVersion version);

/// Whether files of this kind have this version and are binary.
bool IsBinary(FileKind kind, cmn::FileVersion version);

/// Whether a binary file of this version ends with a checksum.
inline bool HasChecksum(cmn::FileVersion version) { return version != kFixedVersion; }

/// Throws cmn::UnsupportedVersionError, listing the supported versions. `where` completes the message: "for
/// output".
[[noreturn]] void ThrowUnsupported(FileKind kind, cmn::FileVersion version, const char* where);

/// The value of "kind" in the text form.
std::string_view KindText(FileKind kind);

/// What is wrong with the value of "kind" or of "fileVersion" in the text form; null where nothing is. A
/// version that the text form does not have throws cmn::UnsupportedVersionError.
const char* CheckKind(FileKind kind, std::string_view text);
const char* CheckVersion(FileKind kind, std::string_view text);

}  // namespace zuna_core
