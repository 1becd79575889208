#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "cmn/file_format.h"

namespace zuna_core {

using cmn::FileKind;

/// What a current binary file begins with; drawn in docs/format-1.md.
struct Header {
  std::uint32_t size = 0;  ///< the count of the bytes that follow it: version, body and checksum
  cmn::FileVersion version;
};

inline constexpr std::size_t kMagicSize = 4;
inline constexpr std::size_t kVersionSize = 1 + 1;
inline constexpr std::size_t kHeaderSize = kMagicSize + 4 + kVersionSize;

/// The header at the front of `bytes`; none where they are too few or begin with another magic.
std::optional<Header> DecodeHeader(FileKind kind, std::string_view bytes);

/// The kHeaderSize bytes of a header.
std::string EncodeHeader(FileKind kind, const Header& header);

}  // namespace zuna_core
