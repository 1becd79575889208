// Binary files put together and taken apart.

#include "tests/platform/core/file/binary_file.h"

#include "kit/hex.h"
#include "platform/core/bytes/coding.h"

namespace zuna_test {

std::string Hex(std::string_view digits) {
  std::string dense;
  for (const char c : digits) {
    if (c != ' ') dense += c;
  }
  return kit::DecodeHex(dense).value();
}

std::string BinaryFile(cmn::FileKind kind, cmn::FileVersion version, const std::string& body) {
  const std::size_t checksum_size = version.minor == 0 ? 0 : 4;
  char number[8];
  std::string file(cmn::BinaryMagic(kind));
  file.append(number, zuna_core::PutFixed(number, 2 + body.size() + checksum_size, 4));
  file += static_cast<char>(version.major);
  file += static_cast<char>(version.minor);
  file += body;
  return file.append(number, zuna_core::PutFixed(number, zuna_core::Crc32(0, file), checksum_size));
}

std::string BodyOf(const std::string& file) {
  const std::size_t checksum_size = file[9] == 0 ? 0 : 4;
  return file.substr(10, file.size() - 10 - checksum_size);
}

std::string PatchedBody(const std::string& file, std::size_t place, std::size_t size,
                        std::string_view digits) {
  return BodyOf(file).replace(place, size, Hex(digits));
}

}  // namespace zuna_test
