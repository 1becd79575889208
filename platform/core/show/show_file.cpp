#include <istream>
#include <string>

#include "platform/core/binary/document.h"
#include "platform/core/file/beginning.h"
#include "platform/core/file/versions.h"
#include "platform/core/show/compact_format.h"
#include "platform/core/show/fixed_format.h"
#include "platform/core/show/show_builder.h"
#include "platform/core/show/text_reader.h"
#include "platform/core/show/text_writer.h"
#include "zuna_midi/show_data.h"

// Which version of a show file is read and written by what.

namespace zuna_core {

namespace {

template <class Sink>
void Encode(const zuna_midi::ShowData& show, cmn::FileVersion version, Sink& sink) {
  if (version == kCompactVersion) {
    EncodeCompactShow(show, sink);
  } else {
    EncodeFixedShow(show, sink);
  }
}

void WriteShow(std::ostream& os, const zuna_midi::ShowData& show, cmn::FileVersion version) {
  if (!IsSupported(FileKind::kShow, version)) ThrowUnsupported(FileKind::kShow, version, "an output");
  CheckWritable(show);
  if (version == kTextVersion) {
    WriteTextShow(os, show);
  } else {
    WriteDocument(os, FileKind::kShow, version, ChecksumOf(version),
                  [&](auto& sink) { Encode(show, version, sink); });
  }
}

zuna_midi::ShowData ReadShow(std::istream& is) {
  const Beginning beginning = ReadBeginning(is, FileKind::kShow);
  if (!beginning.header) return ReadTextShow(is, beginning.bytes);
  const cmn::FileVersion version = beginning.header->version;
  if (!IsBinary(FileKind::kShow, version)) ThrowUnsupported(FileKind::kShow, version, "a binary file");
  const std::string bytes = ReadDocument(is, FileKind::kShow, beginning.bytes, ChecksumOf(version));
  ByteReader in(bytes, kHeaderSize);
  return version == kCompactVersion ? DecodeCompactShow(in) : DecodeFixedShow(in);
}

}  // namespace

}  // namespace zuna_core

namespace zuna_midi {

ShowData::ShowData(std::istream& is) : ShowData(zuna_core::ReadShow(is)) {}

void ShowData::WriteBinary(std::ostream& os, const cmn::FileVersion& version) const {
  zuna_core::WriteShow(os, *this, version);
}

}  // namespace zuna_midi
