#pragma once

// What a current file begins with: the header of a binary file (docs/format-1.md) or the text form.

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

#include "platform/core/file/versions.h"

namespace zuna_core {

/// The header of a binary file.
struct Header {
  std::uint32_t size = 0;  ///< the number of the bytes that follow it: version, body and checksum
  cmn::FileVersion version;
};

inline constexpr std::size_t kMagicSize = 4;
inline constexpr std::size_t kVersionSize = 1 + 1;
inline constexpr std::size_t kHeaderSize = kMagicSize + 4 + kVersionSize;

/// The header at the front of `bytes`; none where they are too few or begin with another magic.
std::optional<Header> DecodeHeader(FileKind kind, std::string_view bytes);

/// The kHeaderSize bytes of a header.
std::string EncodeHeader(FileKind kind, const Header& header);

/// The first bytes of a current file.
struct Preamble {
  std::string bytes;             ///< kHeaderSize of them, fewer of a very short text
  std::optional<Header> header;  ///< of a binary file; none where the text form begins
};

/// Reads the preamble of a current file of this kind. Throws cmn::DataError for other data, or
/// std::ios_base::failure for a file that is cut off, where the stream's mask asks for it.
Preamble ReadPreamble(std::istream& is, FileKind kind);

}  // namespace zuna_core
