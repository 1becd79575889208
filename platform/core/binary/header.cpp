#include "platform/core/binary/header.h"

#include "platform/core/binary/coding.h"

namespace zuna_core {

std::optional<Header> DecodeHeader(FileKind kind, std::string_view bytes) {
  if (bytes.size() < kHeaderSize || bytes.substr(0, kMagicSize) != cmn::BinaryMagic(kind))
    return std::nullopt;
  const char* at = bytes.data() + kMagicSize;
  Header header;
  header.size = static_cast<std::uint32_t>(GetFixed(at, 4));
  header.version.major = static_cast<std::uint8_t>(GetFixed(at + 4, 1));
  header.version.minor = static_cast<std::uint8_t>(GetFixed(at + 5, 1));
  return header;
}

std::string EncodeHeader(FileKind kind, const Header& header) {
  char numbers[16];
  char* at = PutFixed(numbers, header.size, 4);
  at = PutFixed(at, header.version.major, 1);
  at = PutFixed(at, header.version.minor, 1);
  return std::string(cmn::BinaryMagic(kind)).append(numbers, at);
}

}  // namespace zuna_core
