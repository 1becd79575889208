#include <istream>
#include <string>

#include "CL/change_log.h"
#include "platform/core/binary/document.h"
#include "platform/core/file/beginning.h"
#include "platform/core/file/versions.h"
#include "platform/core/log/binary_format.h"
#include "platform/core/log/log_builder.h"
#include "platform/core/log/text_reader.h"
#include "platform/core/log/text_writer.h"

// Which version of a log file, or of a single event, is read and written by what.

namespace zuna_core {

namespace {

void CheckSupported(cmn::FileVersion version) {
  if (!IsSupported(FileKind::kLog, version)) ThrowUnsupported(FileKind::kLog, version, "an output");
}

void WriteLog(std::ostream& os, const CL::ChangeLog& log, cmn::FileVersion version) {
  CheckSupported(version);
  CheckWritable(log);
  if (version == kTextVersion) {
    WriteTextLog(os, log);
  } else {
    WriteDocument(os, FileKind::kLog, version, ChecksumOf(version),
                  [&](auto& sink) { EncodeLog(log, version, sink); });
  }
}

CL::ChangeLog ReadLog(std::istream& is) {
  const Beginning beginning = ReadBeginning(is, FileKind::kLog);
  if (!beginning.header) return ReadTextLog(is, beginning.bytes);
  const cmn::FileVersion version = beginning.header->version;
  if (!IsBinary(FileKind::kLog, version)) ThrowUnsupported(FileKind::kLog, version, "a binary file");
  const std::string bytes = ReadDocument(is, FileKind::kLog, beginning.bytes, ChecksumOf(version));
  ByteReader in(bytes, kHeaderSize);
  return DecodeLog(in, version);
}

template <class Event>
void WriteEvent(std::ostream& os, const Event& event, cmn::FileVersion version) {
  CheckSupported(version);
  OutputWindow window(os, false);
  if (version == kTextVersion) {
    WriteTextEvent(window, event);
  } else {
    ByteWriter writer(window);
    EncodeEvent(event, version, writer);
  }
  window.Flush();
}

}  // namespace

}  // namespace zuna_core

namespace CL {

ChangeLog::ChangeLog(std::istream& is) : ChangeLog(zuna_core::ReadLog(is)) {}

void ChangeLog::WriteBinary(std::ostream& os, const cmn::FileVersion& version) const {
  zuna_core::WriteLog(os, *this, version);
}
void PairedEvent::WriteBinary(std::ostream& os, const cmn::FileVersion& version) const {
  zuna_core::WriteEvent(os, *this, version);
}
void TempoScale::WriteBinary(std::ostream& os, const cmn::FileVersion& version) const {
  zuna_core::WriteEvent(os, *this, version);
}
void Caesura::WriteBinary(std::ostream& os, const cmn::FileVersion& version) const {
  zuna_core::WriteEvent(os, *this, version);
}
void Marker::WriteBinary(std::ostream& os, const cmn::FileVersion& version) const {
  zuna_core::WriteEvent(os, *this, version);
}

}  // namespace CL
