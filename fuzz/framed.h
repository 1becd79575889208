// A body with the header and the checksum of a binary file around it.

#pragma once

#include <cstdint>
#include <string>

#include "cmn/file_format.h"
#include "fuzz/mend/mend.h"

namespace fuzz {

constexpr std::size_t kHeaderSize = 10;

/// The size of the checksum in version 1.`minor`.
constexpr std::size_t ChecksumSize(std::uint8_t minor) { return minor == 0 ? 0 : 4; }

/// A binary file of version 1.`minor`: the right header before a body and the right checksum after it.
inline std::string Framed(cmn::FileKind kind, std::uint8_t minor, const std::string& body) {
  const std::string size(4, '\0');
  const std::string version{1, static_cast<char>(minor)};
  const std::string checksum(ChecksumSize(minor), '\0');
  return MendCurrent(std::string(cmn::BinaryMagic(kind)) + size + version + body + checksum);
}

/// The input for a binary file of version 1.`minor`: the minor version (1 byte) and the body,
/// without header and checksum.
inline std::string Unframed(std::uint8_t minor, const std::string& file) {
  const std::size_t body_size = file.size() - kHeaderSize - ChecksumSize(minor);
  return static_cast<char>(minor) + file.substr(kHeaderSize, body_size);
}

}  // namespace fuzz
