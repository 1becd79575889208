// The frame of a binary file around its body: header and checksum (docs/format-1.md).

#include "platform/core/file/frame.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

#include "cmn/data_error.h"
#include "kit/format.h"
#include "platform/core/bytes/stream_input.h"

namespace zuna_core {

namespace {

using Count = unsigned long long;

/// "The show file" or "The log file", for messages.
std::string TheFile(FileKind kind) { return "The " + std::string(cmn::KindName(kind)) + " file"; }

cmn::DataError CutOff(FileKind kind, std::uint64_t expected, std::uint64_t present) {
  return cmn::DataError(
      TheFile(kind) + kit::format(" is cut off: its header states %llu bytes, only %llu are present",
                                  Count{expected}, Count{present}),
      kGetUndamagedCopy);
}

cmn::DataError ExtraBytes(FileKind kind, std::uint64_t expected) {
  return cmn::DataError(
      TheFile(kind) + kit::format(" has extra bytes after the %llu that its header states", Count{expected}),
      kGetUndamagedCopy);
}

/// Appends to `bytes` until it has `size` of them. Works in pieces, so that a header that states more than
/// is present costs no memory, and so that the memory of a piece is cleared while it is in the cache.
void Append(std::istream& is, FileKind kind, std::uint64_t size, std::string& bytes) {
  constexpr std::uint64_t kPiece = std::uint64_t{256} * 1024;
  while (bytes.size() < size) {
    const auto piece = static_cast<std::size_t>(std::min<std::uint64_t>(kPiece, size - bytes.size()));
    const std::size_t old = bytes.size();
    bytes.resize(old + piece);
    const std::size_t count = ReadSome(is, bytes.data() + old, piece);
    if (count != piece) ThrowTruncated(is, CutOff(kind, size, old + count));
  }
}

/// Removes the checksum from the end of `bytes` and compares it.
void TakeChecksum(FileKind kind, std::string& bytes) {
  const std::size_t size = bytes.size() - kChecksumSize;
  const auto stored = static_cast<std::uint32_t>(GetFixed(bytes.data() + size, kChecksumSize));
  bytes.resize(size);
  if (Crc32(0, bytes) != stored) {
    throw cmn::DataError(TheFile(kind) + " is damaged: its checksum is wrong", kGetUndamagedCopy);
  }
}

std::size_t ChecksumSize(cmn::FileVersion version) { return HasChecksum(version) ? kChecksumSize : 0; }

}  // namespace

std::string ReadFrame(std::istream& is, FileKind kind, const Preamble& preamble) {
  const cmn::FileVersion version = preamble.header->version;
  if (!IsBinary(kind, version)) ThrowUnsupported(kind, version, "in binary files");
  const std::uint64_t size = kHeaderSize - kVersionSize + std::uint64_t{preamble.header->size};
  if (size < kHeaderSize + ChecksumSize(version)) {
    throw cmn::DataError(
        TheFile(kind) +
            kit::format(" is damaged: its header states %llu bytes, fewer than any file has", Count{size}),
        kGetUndamagedCopy);
  }
  std::string bytes;
  if (const std::optional<std::uint64_t> remaining = RemainingBytes(is)) {
    const std::uint64_t present = kHeaderSize + *remaining;
    if (present < size) ThrowTruncated(is, CutOff(kind, size, present));
    if (present > size) throw ExtraBytes(kind, size);
    bytes.reserve(static_cast<std::size_t>(size));
  }
  bytes = preamble.bytes;
  Append(is, kind, size, bytes);
  char extra = 0;
  if (ReadSome(is, &extra, 1) != 0) throw ExtraBytes(kind, size);
  if (HasChecksum(version)) TakeChecksum(kind, bytes);
  return bytes;
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
