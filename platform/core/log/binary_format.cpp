#include "platform/core/log/binary_format.h"

#include "platform/core/file/versions.h"
#include "platform/core/log/field_reader.h"
#include "platform/core/log/field_writer.h"
#include "platform/core/log/fields.h"

namespace zuna_core {

namespace {

/// Calls `write` with a FieldWriter in the layout of this version.
template <class Sink, class Write>
void WriteFields(cmn::FileVersion version, Sink& sink, const Write& write) {
  if (version == kCompactVersion) {
    FieldWriter<Layout::kCompact, Sink> fields(sink);
    write(fields);
  } else {
    FieldWriter<Layout::kFixed, Sink> fields(sink);
    write(fields);
  }
}

template <class Sink>
void Encode(const CL::ChangeLog& log, cmn::FileVersion version, Sink& sink) {
  WriteFields(version, sink, [&](auto& fields) { LogFields(fields, log); });
}

template <Layout kLayout>
CL::ChangeLog Decode(ByteReader& in) {
  CL::ChangeLog log;
  FieldReader<kLayout> fields(in);
  LogFields(fields, log);
  in.ExpectEnd();
  return log;
}

}  // namespace

void EncodeLog(const CL::ChangeLog& log, cmn::FileVersion version, ByteCounter& sink) {
  Encode(log, version, sink);
}
void EncodeLog(const CL::ChangeLog& log, cmn::FileVersion version, ByteWriter& sink) {
  Encode(log, version, sink);
}

CL::ChangeLog DecodeLog(ByteReader& in, cmn::FileVersion version) {
  CL::ChangeLog log = version == kCompactVersion ? Decode<Layout::kCompact>(in) : Decode<Layout::kFixed>(in);
  log.file_version = version;
  return log;
}

template <class Event>
void EncodeEvent(const Event& event, cmn::FileVersion version, ByteWriter& sink) {
  WriteFields(version, sink, [&](auto& fields) { EventFields(fields, event); });
}
template void EncodeEvent(const CL::PairedEvent&, cmn::FileVersion, ByteWriter&);
template void EncodeEvent(const CL::TempoScale&, cmn::FileVersion, ByteWriter&);
template void EncodeEvent(const CL::Marker&, cmn::FileVersion, ByteWriter&);
template void EncodeEvent(const CL::Caesura&, cmn::FileVersion, ByteWriter&);

}  // namespace zuna_core
