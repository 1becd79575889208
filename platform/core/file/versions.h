#pragma once

#include "cmn/file_version.h"
#include "platform/core/binary/document.h"
#include "platform/core/binary/header.h"

namespace zuna_core {

inline constexpr cmn::FileVersion kFixedVersion{1, 0};
inline constexpr cmn::FileVersion kCheckedVersion{1, 1};
inline constexpr cmn::FileVersion kCompactVersion{1, 2};
inline constexpr cmn::FileVersion kTextVersion{2, 0};

/// Whether files of this kind have this version and are binary.
bool IsBinary(FileKind kind, cmn::FileVersion version);

/// Whether files of this kind have this version.
bool IsSupported(FileKind kind, cmn::FileVersion version);

/// How a binary file of this version ends.
Checksum ChecksumOf(cmn::FileVersion version);

/// Throws cmn::UnsupportedVersionError for a file of this version in `form`, listing the supported ones.
[[noreturn]] void ThrowUnsupported(FileKind kind, cmn::FileVersion version, const char* form);

}  // namespace zuna_core
