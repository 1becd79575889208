// Reading and writing log files of every version, and single events (docs/format-1.md, docs/format-2.md).

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "CL/change_log.h"
#include "CL/text_form.h"
#include "platform/core/bytes/quote.h"
#include "platform/core/file/frame.h"
#include "platform/core/log/fields.h"
#include "platform/core/log/file.h"

namespace zuna_core {

namespace {

/// Visits the fields of a song log, as the writers do, and finds the first list that is null.
class NullListFinder {
 public:
  template <typename Events>
  void List(std::string_view key, const std::shared_ptr<Events>& list) {
    if (!list && found.empty()) found = key;
  }
  void U8(std::string_view, std::uint8_t) {}
  void U16(std::string_view, std::uint16_t) {}
  void U32(std::string_view, std::uint32_t) {}
  void Text(std::string_view, const std::string&) {}
  void SongNumber(std::string_view, const std::string&) {}

  std::string found;  ///< the name of the list; empty where none is null
};

/// Throws std::logic_error for a song log that no file can hold: null, without one of its lists, or held
/// under another number than its own.
void CheckWritable(const std::string& number, const CL::SongLog* song) {
  const auto refuse = [&number](const std::string& problem) {
    throw std::logic_error("Song " + Quote(number) + " cannot be written: " + problem);
  };
  if (song == nullptr) refuse("its song log is null");
  if (song->song_number != number) refuse("its number was changed to " + Quote(song->song_number));
  NullListFinder null_list;
  VisitFields(null_list, *song);
  if (!null_list.found.empty()) refuse("its list " + null_list.found + " is null");
}

void CheckSupported(cmn::FileVersion version) {
  if (!cmn::IsSupported(FileKind::kLog, version)) ThrowUnsupported(FileKind::kLog, version, "for output");
}

void CheckWritable(const CL::ChangeLog& log, cmn::FileVersion version) {
  CheckSupported(version);
  for (const auto& [number, song] : log.song_logs()) CheckWritable(number, song.get());
}

void WriteLog(std::ostream& os, const CL::ChangeLog& log, cmn::FileVersion version) {
  CheckWritable(log, version);
  if (LayoutOf(version) == Layout::kText) {
    WriteTextLog(os, log, version);
  } else {
    WriteFrame(os, FileKind::kLog, version, [&](auto& sink) { EncodeLog(log, version, sink); });
  }
}

CL::ChangeLog ReadLog(std::istream& is) {
  const Preamble preamble = ReadPreamble(is, FileKind::kLog);
  CL::ChangeLog log;
  if (!preamble.header) {
    log = ReadTextLog(is, preamble.bytes);
    log.file_version = kTextVersion;
    return log;
  }
  log = ReadFields(is, FileKind::kLog, preamble,
                   [&](ByteReader& in) { return DecodeLog(in, preamble.header->version); });
  log.file_version = preamble.header->version;
  return log;
}

template <typename Event>
void WriteEvent(std::ostream& os, const Event& event, cmn::FileVersion version) {
  CheckSupported(version);
  if (LayoutOf(version) == Layout::kText) return WriteTextEvent(os, event);
  BufferedOutput output(os, false);
  ByteWriter writer(output);
  EncodeEvent(event, version, writer);
  output.Flush();
}

}  // namespace

}  // namespace zuna_core

namespace CL {

ChangeLog::ChangeLog(std::istream& is) : ChangeLog(zuna_core::ReadLog(is)) {}

void ChangeLog::WriteBinary(std::ostream& os, const cmn::FileVersion& version) const {
  zuna_core::WriteLog(os, *this, version);
}

void WriteTextForm(std::ostream& os, const ChangeLog& log, const cmn::FileVersion& stated) {
  zuna_core::CheckWritable(log, stated);
  zuna_core::WriteTextLog(os, log, stated);
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
