// Mends current binary files, and chooses how to mend any file.

#include <libdeflate.h>

#include <string_view>

#include "fuzz/mend/mend.h"
#include "fuzz/mend/numbers.h"

namespace fuzz {

namespace {

constexpr std::size_t kSizeAt = 4;
constexpr std::size_t kMinorAt = 9;
constexpr std::size_t kHeaderSize = 10;
constexpr std::size_t kChecksumSize = 4;

}  // namespace

std::string MendCurrent(std::string bytes) {
  if (bytes.size() < kHeaderSize) return bytes;
  PutNumber(bytes, kSizeAt, 4, bytes.size() - kSizeAt - 4);
  const bool has_checksum = bytes[kMinorAt] != 0;
  if (!has_checksum || bytes.size() < kHeaderSize + kChecksumSize) return bytes;
  const std::size_t end = bytes.size() - kChecksumSize;
  PutNumber(bytes, end, kChecksumSize, libdeflate_crc32(0, bytes.data(), end));
  return bytes;
}

std::string Mend(const std::string& bytes) {
  const std::string_view mark = std::string_view(bytes).substr(0, 4);
  if (mark == "MThd") return MendMidiFile(bytes);
  if (mark == "ZUNA") return MendLegacyLog(bytes);
  if (mark == std::string_view("\0ZSH", 4) || mark == std::string_view("\0ZLG", 4)) return MendCurrent(bytes);
  if (mark.starts_with('{')) return bytes;
  return MendLegacyShow(bytes);
}

}  // namespace fuzz
