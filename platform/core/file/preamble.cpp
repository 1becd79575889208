// What a current file begins with: the header of a binary file (docs/format-1.md) or the text form.

#include "platform/core/file/preamble.h"

#include <istream>

#include "cmn/data_error.h"
#include "kit/format.h"
#include "platform/core/bytes/coding.h"
#include "platform/core/bytes/stream_input.h"

namespace zuna_core {

namespace {

[[noreturn]] void ThrowNoFile(std::istream& is, FileKind kind, std::string_view bytes) {
  const std::string name(cmn::KindName(kind));
  const std::string_view magic = cmn::BinaryMagic(kind);
  if (bytes.size() < kHeaderSize && bytes.substr(0, magic.size()) == magic.substr(0, bytes.size())) {
    const std::string problem =
        kit::format("The %s file is cut off: it has %zu bytes and its header needs %zu", name.c_str(),
                    bytes.size(), kHeaderSize);
    ThrowTruncated(is, cmn::CutOffError(cmn::DataError::Parts{
                           .offset = bytes.size(), .problem = problem, .remedy = kGetCompleteCopy}));
  }
  const FileKind other = kind == FileKind::kShow ? FileKind::kLog : FileKind::kShow;
  if (DecodeHeader(other, bytes)) {
    const std::string other_name(cmn::KindName(other));
    throw cmn::DataError("This is a current " + other_name + " file, not a " + name + " file");
  }
  throw cmn::DataError("This is not a current " + name + " file: it has no header",
                       "a legacy " + name + " (version 0.0) must be converted up first");
}

}  // namespace

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

Preamble ReadPreamble(std::istream& is, FileKind kind) {
  Preamble preamble;
  preamble.bytes.resize(kHeaderSize);
  preamble.bytes.resize(ReadSome(is, preamble.bytes.data(), kHeaderSize));
  if (preamble.bytes.starts_with(cmn::kTextFormStart)) return preamble;
  preamble.header = DecodeHeader(kind, preamble.bytes);
  if (!preamble.header) ThrowNoFile(is, kind, preamble.bytes);
  return preamble;
}

}  // namespace zuna_core
