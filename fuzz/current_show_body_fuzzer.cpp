// The input: a minor version (1 byte, modulo 3) and the body of a binary show file. The target puts the right
// header before it and the right checksum behind it, so that the input reaches the fields.

#include <string>

#include "fuzz/show_round_trip.h"
#include "fuzz/target.h"
#include "platform/core/binary/coding.h"
#include "platform/core/binary/crc32.h"
#include "platform/core/binary/document.h"

namespace {

std::string Framed(std::uint8_t minor, const std::string& body) {
  const std::size_t checksum_size = minor == 0 ? 0 : zuna_core::kChecksumSize;
  const auto size = static_cast<std::uint32_t>(zuna_core::kVersionSize + body.size() + checksum_size);
  std::string file = zuna_core::EncodeHeader(zuna_core::FileKind::kShow, {size, {1, minor}}) + body;
  char crc[8];
  return file.append(crc, zuna_core::PutFixed(crc, zuna_core::Crc32(0, file), checksum_size));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  fuzz::ReadAndConvert(Framed(data[0] % 3, std::string(data + 1, data + size)));
  return 0;
}
