#include <array>
#include <istream>
#include <string>
#include <string_view>

#include "cmn/data_error.h"
#include "kit/format.h"
#include "platform/core/binary/document.h"
#include "platform/core/show/compact_format.h"
#include "platform/core/show/fixed_format.h"
#include "platform/core/show/show_builder.h"
#include "platform/core/show/text_reader.h"
#include "platform/core/show/text_writer.h"
#include "platform/core/show/versions.h"
#include "platform/core/stream/input.h"
#include "zuna_midi/show_data.h"

// Which version of a show file is read and written by what.

namespace zuna_core {

void ThrowUnsupportedShow(cmn::FileVersion version, const char* form) {
  throw cmn::UnsupportedVersionError(
      kit::format("Show file version %u.%u is not supported as %s; the supported versions are "
                  "1.0, 1.1 and 1.2 (binary) and 2.0 (text)",
                  static_cast<unsigned>(version.major), static_cast<unsigned>(version.minor), form));
}

namespace {

template <class Sink>
void Encode(const zuna_midi::ShowData& show, cmn::FileVersion version, Sink& sink) {
  if (version == kCompactVersion) {
    EncodeCompactShow(show, sink);
  } else {
    EncodeFixedShow(show, sink);
  }
}

Checksum ChecksumOf(cmn::FileVersion version) {
  return version == kFixedVersion ? Checksum::kNone : Checksum::kCrc32;
}

bool IsBinary(cmn::FileVersion version) {
  return version == kFixedVersion || version == kCheckedVersion || version == kCompactVersion;
}

void WriteShow(std::ostream& os, const zuna_midi::ShowData& show, cmn::FileVersion version) {
  if (version != kTextVersion && !IsBinary(version)) ThrowUnsupportedShow(version, "an output");
  CheckWritable(show);
  if (version == kTextVersion) {
    WriteTextShow(os, show);
  } else {
    WriteDocument(os, FileKind::kShow, version, ChecksumOf(version),
                  [&](auto& sink) { Encode(show, version, sink); });
  }
}

zuna_midi::ShowData ReadBinaryShow(std::istream& is, std::string_view header_bytes,
                                   cmn::FileVersion version) {
  if (!IsBinary(version)) ThrowUnsupportedShow(version, "a binary file");
  const std::string bytes = ReadDocument(is, FileKind::kShow, header_bytes, ChecksumOf(version));
  ByteReader in(bytes, kHeaderSize);
  return version == kCompactVersion ? DecodeCompactShow(in) : DecodeFixedShow(in);
}

[[noreturn]] void ThrowNoShow(std::istream& is, std::string_view beginning) {
  const std::string_view magic = Magic(FileKind::kShow);
  if (beginning.size() < kHeaderSize &&
      beginning.substr(0, magic.size()) == magic.substr(0, beginning.size())) {
    ThrowTruncated(is, kit::format("The show file is cut off: it has %zu bytes and its header takes %zu; "
                                   "take the file from its source again",
                                   beginning.size(), kHeaderSize));
  }
  if (DecodeHeader(FileKind::kLog, beginning))
    throw cmn::DataError("This is a current log file, not a show file");
  throw cmn::DataError(
      "This is no current show file: it has no header; "
      "a legacy show (version 0.0) has to be converted up first");
}

zuna_midi::ShowData ReadShow(std::istream& is) {
  std::array<char, kHeaderSize> buffer{};
  const std::string_view beginning(buffer.data(), ReadSome(is, buffer.data(), buffer.size()));
  if (!beginning.empty() && beginning.front() == '{') return ReadTextShow(is, beginning);
  const std::optional<Header> header = DecodeHeader(FileKind::kShow, beginning);
  if (!header) ThrowNoShow(is, beginning);
  return ReadBinaryShow(is, beginning, header->version);
}

}  // namespace

}  // namespace zuna_core

namespace zuna_midi {

ShowData::ShowData(std::istream& is) : ShowData(zuna_core::ReadShow(is)) {}

void ShowData::WriteBinary(std::ostream& os, const cmn::FileVersion& version) const {
  zuna_core::WriteShow(os, *this, version);
}

}  // namespace zuna_midi
