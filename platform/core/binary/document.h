#pragma once

#include <cstdint>
#include <iosfwd>
#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/core/binary/byte_writer.h"
#include "platform/core/binary/header.h"

namespace zuna_core {

/// What tells the binary versions apart in a file's frame.
enum class Checksum { kNone, kCrc32 };

inline constexpr std::size_t kChecksumSize = 4;

/// Reads the rest of a binary file whose header has been read into `header_bytes`, and checks its size and
/// its checksum. Returns the bytes from the header to the last one before the checksum. Throws cmn::DataError
/// for a file that is cut off, goes on after its end or is damaged.
std::string ReadDocument(std::istream& is, FileKind kind, std::string_view header_bytes, Checksum checksum);

/// The header of a file whose body has `body_size` bytes. Throws std::length_error when that is too much.
std::string DocumentHeader(FileKind kind, cmn::FileVersion version, std::uint64_t body_size,
                           Checksum checksum);

/// Writes the checksum, if any, and everything that the window holds.
void FinishDocument(OutputWindow& window, Checksum checksum);

/// Writes a binary file. `encode(sink)` puts the body into a ByteCounter first and then into a ByteWriter.
template <class Encode>
void WriteDocument(std::ostream& os, FileKind kind, cmn::FileVersion version, Checksum checksum,
                   const Encode& encode) {
  ByteCounter counter;
  encode(counter);
  const std::string header = DocumentHeader(kind, version, counter.size(), checksum);
  OutputWindow window(os, checksum == Checksum::kCrc32);
  window.Write(header);
  ByteWriter writer(window);
  encode(writer);
  FinishDocument(window, checksum);
}

}  // namespace zuna_core
