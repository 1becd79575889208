// A body with the header and the checksum of a binary file around it.

#pragma once

// The frame around the body of a binary file.

#include <cstdint>
#include <string>

#include "platform/core/bytes/coding.h"
#include "platform/core/file/frame.h"

namespace fuzz {

/// A binary file of version 1.`minor`: the right header before a body and the right checksum after it.
inline std::string Framed(cmn::FileKind kind, std::uint8_t minor, const std::string& body) {
  const std::size_t checksum_size = minor == 0 ? 0 : zuna_core::kChecksumSize;
  const auto size = static_cast<std::uint32_t>(zuna_core::kVersionSize + body.size() + checksum_size);
  std::string file = zuna_core::EncodeHeader(kind, {size, {1, minor}}) + body;
  char crc[8];
  return file.append(crc, zuna_core::PutFixed(crc, zuna_core::Crc32(0, file), checksum_size));
}

/// The input for a binary file of version 1.`minor`: the minor version (1 byte) and the body,
/// without header and checksum.
inline std::string Unframed(std::uint8_t minor, const std::string& file) {
  const std::size_t checksum_size = minor == 0 ? 0 : zuna_core::kChecksumSize;
  const std::size_t body_size = file.size() - zuna_core::kHeaderSize - checksum_size;
  return static_cast<char>(minor) + file.substr(zuna_core::kHeaderSize, body_size);
}

}  // namespace fuzz
