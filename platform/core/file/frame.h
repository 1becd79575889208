#pragma once

// The frame of a binary file around its body: header and checksum (docs/format-1.md).

#include <cstdint>
#include <iosfwd>
#include <string>

#include "platform/core/bytes/byte_writer.h"
#include "platform/core/file/preamble.h"

namespace zuna_core {

inline constexpr std::size_t kChecksumSize = 4;

/// Reads the rest of a binary file after its preamble, and checks its version, its size and its checksum.
/// Returns the bytes from the header to the last one before the checksum. Throws
/// cmn::UnsupportedVersionError, and cmn::DataError for a file that is cut off, has bytes after its end or is
/// damaged.
std::string ReadFrame(std::istream& is, FileKind kind, const Preamble& preamble);

/// The header of a file whose body has `body_size` bytes. Throws std::length_error when that is too much.
std::string FrameHeader(FileKind kind, cmn::FileVersion version, std::uint64_t body_size);

/// Writes the checksum, where the version has one, and everything that the buffer holds.
void FinishFrame(BufferedOutput& output, cmn::FileVersion version);

/// Writes a binary file. `encode(sink)` writes the body into a ByteCounter first and then into a ByteWriter.
template <typename Encode>
void WriteFrame(std::ostream& os, FileKind kind, cmn::FileVersion version, const Encode& encode) {
  ByteCounter counter;
  encode(counter);
  const std::string header = FrameHeader(kind, version, counter.size());
  BufferedOutput output(os, HasChecksum(version));
  output.Write(header);
  ByteWriter writer(output);
  encode(writer);
  FinishFrame(output, version);
}

}  // namespace zuna_core
