// The header of binary files of current versions, which may be damaged (docs/format-1.md).
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "cmn/file_format.h"

namespace zuna_toolkit {

inline constexpr std::size_t kBinaryHeaderSize = 10;

/// The kind of a binary file of a current version, as its magic tells; its other bytes make up for a damaged
/// one. None where `plaintext` has no such magic.
std::optional<cmn::FileKind> BinaryKind(std::string_view plaintext);

/// How many bytes the file has, as its header states, which is there.
std::uint64_t StatedSize(std::string_view plaintext);

/// The version that its header states, which is there.
cmn::FileVersion StatedVersion(std::string_view plaintext);

/// The version that a binary file or a text form states, where this release does not know it; none for
/// others.
std::optional<cmn::FileVersion> UnknownVersion(std::string_view plaintext);

/// Whether files of this version have a checksum.
bool HasChecksum(cmn::FileVersion version);

/// The header of a whole file.
std::string HeaderBytes(cmn::FileKind kind, cmn::FileVersion version, std::size_t file_size);

}  // namespace zuna_toolkit
