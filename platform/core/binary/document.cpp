#include "platform/core/binary/document.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "cmn/data_error.h"
#include "kit/format.h"
#include "platform/core/binary/crc32.h"
#include "platform/core/stream/input.h"

namespace zuna_core {

namespace {

using Count = unsigned long long;

cmn::DataError CutOff(FileKind kind, std::uint64_t expected, std::uint64_t present) {
  return cmn::DataError(
      kit::format("The %s file is cut off: its header announces %llu bytes and %llu are there",
                  cmn::KindName(kind).data(), Count{expected}, Count{present}),
      kTakeAgain);
}

cmn::DataError GoesOn(FileKind kind, std::uint64_t expected) {
  return cmn::DataError(kit::format("The %s file goes on after the %llu bytes that its header announces",
                                    cmn::KindName(kind).data(), Count{expected}),
                        kTakeAgain);
}

/// Appends to `bytes` until it has `size` of them. Works in pieces, so that a header that announces more than
/// there is costs no memory, and so that the room for a piece is cleared while it is in the cache.
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

void CheckChecksum(FileKind kind, std::string& bytes) {
  const std::size_t size = bytes.size() - kChecksumSize;
  const auto stored = static_cast<std::uint32_t>(GetFixed(bytes.data() + size, kChecksumSize));
  bytes.resize(size);
  if (Crc32(0, bytes) != stored) {
    throw cmn::DataError(
        kit::format("The %s file is damaged: its checksum is wrong", cmn::KindName(kind).data()), kTakeAgain);
  }
}

}  // namespace

std::string ReadDocument(std::istream& is, FileKind kind, std::string_view header_bytes, Checksum checksum) {
  const std::uint64_t size =
      kHeaderSize - kVersionSize + std::uint64_t{DecodeHeader(kind, header_bytes)->size};
  const std::size_t least = kHeaderSize + (checksum == Checksum::kCrc32 ? kChecksumSize : 0);
  if (size < least) {
    throw cmn::DataError(kit::format("The header of the %s file announces %llu bytes, less than any has",
                                     cmn::KindName(kind).data(), Count{size}));
  }
  std::string bytes;
  if (const std::optional<std::uint64_t> remaining = RemainingBytes(is)) {
    const std::uint64_t present = kHeaderSize + *remaining;
    if (present < size) ThrowTruncated(is, CutOff(kind, size, present));
    if (present > size) throw GoesOn(kind, size);
    bytes.reserve(static_cast<std::size_t>(size));
  }
  bytes = header_bytes;
  Append(is, kind, size, bytes);
  char extra = 0;
  if (ReadSome(is, &extra, 1) != 0) throw GoesOn(kind, size);
  if (checksum == Checksum::kCrc32) CheckChecksum(kind, bytes);
  return bytes;
}

std::string DocumentHeader(FileKind kind, cmn::FileVersion version, std::uint64_t body_size,
                           Checksum checksum) {
  const std::uint64_t size = kVersionSize + body_size + (checksum == Checksum::kCrc32 ? kChecksumSize : 0);
  if (size > std::numeric_limits<std::uint32_t>::max()) {
    throw std::length_error(
        kit::format("The %s needs %llu bytes; a binary file holds less than 4 GiB, "
                    "so write it as text (version 2.0)",
                    cmn::KindName(kind).data(), Count{size}));
  }
  return EncodeHeader(kind, {static_cast<std::uint32_t>(size), version});
}

void FinishDocument(OutputWindow& window, Checksum checksum) {
  window.Flush();
  if (checksum == Checksum::kNone) return;
  ByteWriter(window).Fixed(window.flushed_crc(), kChecksumSize);
  window.Flush();
}

}  // namespace zuna_core
