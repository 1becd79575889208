#pragma once

// The frame of a binary file around its body: header and checksum (docs/format-1.md).

#include <cstdint>
#include <iosfwd>
#include <string>

#include "cmn/data_error.h"
#include "platform/core/bytes/byte_reader.h"
#include "platform/core/bytes/byte_writer.h"
#include "platform/core/file/preamble.h"

namespace zuna_core {

inline constexpr std::size_t kChecksumSize = 4;

/// What is wrong with a frame whose fields may still be read.
enum class FrameDamage { kNone, kCutOff, kWrongChecksum };

/// A binary file in memory.
struct Frame {
  std::string bytes;              ///< from the header to the last one before the checksum, or to the end
  std::uint64_t stated_size = 0;  ///< of the file, as its header states
  FrameDamage damage = FrameDamage::kNone;
};

/// Reads the rest of a binary file after its preamble, and checks its version, its size and its checksum.
/// Throws cmn::UnsupportedVersionError, cmn::BytesAfterEndError, and cmn::DataError for a size that no file
/// has.
Frame ReadFrame(std::istream& is, FileKind kind, const Preamble& preamble);

/// Throws that `frame` is damaged. `place` is where reading its fields fails, and how; empty where all of
/// them can be read.
[[noreturn]] void ThrowDamaged(std::istream& is, FileKind kind, const Frame& frame,
                               const cmn::DataError::Parts& place);

/// Reads the rest of a binary file after its preamble. Returns what `decode(in)` makes of its fields, which
/// are never those of a damaged file: there it only tells the place of the damage.
template <typename Decode>
auto ReadFields(std::istream& is, FileKind kind, const Preamble& preamble, const Decode& decode) {
  const Frame frame = ReadFrame(is, kind, preamble);
  ByteReader in(frame.bytes, kHeaderSize);
  if (frame.damage == FrameDamage::kNone) return decode(in);
  cmn::DataError::Parts place;
  try {
    decode(in);
  } catch (const cmn::DataError& error) {
    place = {error.song(), error.field(), error.offset(), error.problem(), {}};
  }
  ThrowDamaged(is, kind, frame, place);
}

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
