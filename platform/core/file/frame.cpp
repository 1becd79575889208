// The frame of a binary file around its body: header and checksum (docs/format-1.md).

#include "platform/core/file/frame.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>

#include "cmn/data_error.h"
#include "kit/format.h"
#include "platform/core/bytes/stream_input.h"

namespace zuna_core {

namespace {

using Count = unsigned long long;

/// "The show file" or "The log file", for messages.
std::string TheFile(FileKind kind) { return "The " + std::string(cmn::KindName(kind)) + " file"; }

cmn::BytesAfterEndError ExtraBytes(FileKind kind, std::uint64_t expected) {
  const std::string problem =
      TheFile(kind) + kit::format(" has extra bytes after the %llu that its header states", Count{expected});
  return cmn::BytesAfterEndError(cmn::DataError::Parts{
      .offset = expected, .problem = problem, .remedy = "get another copy of the file"});
}

/// Appends to `bytes` until it has `size` of them or the stream ends. Works in pieces, so that a header that
/// states more than is present costs no memory, and so that the memory of a piece is cleared while it is in
/// the cache.
void Append(std::istream& is, std::uint64_t size, std::string& bytes) {
  constexpr std::uint64_t kPiece = std::uint64_t{256} * 1024;
  while (bytes.size() < size) {
    const auto piece = static_cast<std::size_t>(std::min<std::uint64_t>(kPiece, size - bytes.size()));
    const std::size_t old = bytes.size();
    bytes.resize(old + piece);
    const std::size_t count = ReadSome(is, bytes.data() + old, piece);
    bytes.resize(old + count);
    if (count != piece) return;
  }
}

/// Removes the checksum from the end of `bytes`. Whether it is theirs.
bool TakeChecksum(std::string& bytes) {
  const std::size_t size = bytes.size() - kChecksumSize;
  const auto stored = static_cast<std::uint32_t>(GetFixed(bytes.data() + size, kChecksumSize));
  bytes.resize(size);
  return Crc32(0, bytes) == stored;
}

std::size_t ChecksumSize(cmn::FileVersion version) { return HasChecksum(version) ? kChecksumSize : 0; }

}  // namespace

Frame ReadFrame(std::istream& is, FileKind kind, const Preamble& preamble) {
  const cmn::FileVersion version = preamble.header->version;
  if (!IsBinary(kind, version)) ThrowUnsupported(kind, version, "in binary files");
  const std::uint64_t size = kHeaderSize - kVersionSize + std::uint64_t{preamble.header->size};
  if (size < kHeaderSize + ChecksumSize(version)) {
    throw cmn::DataError(
        TheFile(kind) +
            kit::format(" is damaged: its header states %llu bytes, fewer than any file has", Count{size}),
        kGetUndamagedCopy);
  }
  Frame frame;
  frame.stated_size = size;
  if (const std::optional<std::uint64_t> remaining = RemainingBytes(is)) {
    const std::uint64_t present = kHeaderSize + *remaining;
    if (present > size) throw ExtraBytes(kind, size);
    frame.bytes.reserve(static_cast<std::size_t>(present));
  }
  frame.bytes = preamble.bytes;
  Append(is, size, frame.bytes);
  char extra = 0;
  if (frame.bytes.size() < size) {
    frame.damage = FrameDamage::kCutOff;
  } else if (ReadSome(is, &extra, 1) != 0) {
    throw ExtraBytes(kind, size);
  } else if (HasChecksum(version) && !TakeChecksum(frame.bytes)) {
    frame.damage = FrameDamage::kWrongChecksum;
  }
  return frame;
}

void ThrowDamaged(std::istream& is, FileKind kind, const Frame& frame, const cmn::DataError::Parts& place) {
  cmn::DataError::Parts parts = place;
  if (frame.damage == FrameDamage::kCutOff) {
    parts.offset = frame.bytes.size();
    parts.problem =
        TheFile(kind) + kit::format(" is cut off: its header states %llu bytes, only %llu are present",
                                    Count{frame.stated_size}, Count{frame.bytes.size()});
    parts.remedy = kGetCompleteCopy;
    ThrowTruncated(is, cmn::CutOffError(std::move(parts)));
  }
  if (place.problem.empty()) {
    parts.problem = TheFile(kind) +
                    " is damaged: its checksum is wrong, though every field can be read, so nothing tells "
                    "which bytes were changed";
  } else {
    parts.problem += ", and the checksum is wrong: the damage is here or before";
  }
  parts.remedy = kGetUndamagedCopy;
  throw cmn::DataError(std::move(parts));
}

std::string FrameHeader(FileKind kind, cmn::FileVersion version, std::uint64_t body_size) {
  const std::uint64_t size = kVersionSize + body_size + ChecksumSize(version);
  if (size > std::numeric_limits<std::uint32_t>::max()) {
    throw std::length_error(
        kit::format("The %s needs %llu bytes; a binary file holds less than 4 GiB, "
                    "so write it as text (version 2.0)",
                    std::string(cmn::KindName(kind)).c_str(), Count{size}));
  }
  return EncodeHeader(kind, {static_cast<std::uint32_t>(size), version});
}

void FinishFrame(BufferedOutput& output, cmn::FileVersion version) {
  output.Flush();
  if (!HasChecksum(version)) return;
  ByteWriter(output).Fixed(output.flushed_crc(), kChecksumSize);
  output.Flush();
}

}  // namespace zuna_core
