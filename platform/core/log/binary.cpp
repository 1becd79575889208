// The body of a binary log file (docs/format-1.md). The fields of all records are in log/fields.h.

#include "platform/core/log/file.h"

#include "CL/log_records.h"
#include "platform/core/file/binary_field_reader.h"
#include "platform/core/file/binary_field_writer.h"
#include "platform/core/file/field_lister.h"
#include "platform/core/file/record_at.h"
#include "platform/core/log/fields.h"

namespace zuna_core {

void EncodeLog(const CL::ChangeLog& log, cmn::FileVersion version, ByteCounter& sink) {
  WriteBinaryFields(sink, version, log);
}
void EncodeLog(const CL::ChangeLog& log, cmn::FileVersion version, ByteWriter& sink) {
  WriteBinaryFields(sink, version, log);
}

CL::ChangeLog DecodeLog(ByteReader& in, cmn::FileVersion version) {
  CL::ChangeLog log;
  ReadBinaryFields(in, version, log);
  return log;
}

template <typename Event>
void EncodeEvent(const Event& event, cmn::FileVersion version, ByteWriter& sink) {
  WriteBinaryFields(sink, version, event);
}
template void EncodeEvent(const CL::PairedEvent&, cmn::FileVersion, ByteWriter&);
template void EncodeEvent(const CL::TempoScale&, cmn::FileVersion, ByteWriter&);
template void EncodeEvent(const CL::Marker&, cmn::FileVersion, ByteWriter&);
template void EncodeEvent(const CL::Caesura&, cmn::FileVersion, ByteWriter&);

}  // namespace zuna_core

namespace CL {

LogHead ReadLogHead(std::string_view file, std::size_t& offset, cmn::FileVersion version) {
  LogHead head;
  zuna_core::ReadHeadAt(file, offset, version, head.log, head.songs);
  return head;
}

std::shared_ptr<SongLog> ReadSongLog(std::string_view file, std::size_t& offset, cmn::FileVersion version) {
  auto song = zuna_core::ChildRecords<ChangeLog>::New();
  zuna_core::ReadRecordAt(file, offset, version, *song);
  return song;
}

std::shared_ptr<SongLog> ReadBeginningOfSongLog(std::string_view file, std::size_t& offset,
                                                cmn::FileVersion version) {
  auto song = zuna_core::ChildRecords<ChangeLog>::New();
  zuna_core::ReadBeginningAt(file, offset, version, *song);
  return song;
}

void ListFields(std::string_view file, const cmn::TakeField& take) {
  zuna_core::PlaceFields<ChangeLog>(cmn::FileKind::kLog, file, take);
}

}  // namespace CL
