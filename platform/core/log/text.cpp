// The text form of a log (docs/format-2.md). The fields of all records are in log/fields.h.

#include "platform/core/log/file.h"

#include "CL/text_form.h"
#include "platform/core/file/text_field_binder.h"
#include "platform/core/file/text_field_writer.h"
#include "platform/core/log/fields.h"

namespace zuna_core {

void WriteTextLog(std::ostream& os, const CL::ChangeLog& log, cmn::FileVersion stated) {
  WriteTextForm(os, FileKind::kLog, stated, log);
}

CL::ChangeLog ReadTextLog(std::istream& is, std::string_view prefix) {
  return ReadTextForm<CL::ChangeLog>(is, prefix, {FileKind::kLog}).record;
}

template <typename Event>
void WriteTextEvent(std::ostream& os, const Event& event) {
  zuna_json::Writer json(os);
  TextFieldWriter(json).Record(event, zuna_json::Writer::Style::kOneLine);
  json.Flush();
}
template void WriteTextEvent(std::ostream&, const CL::PairedEvent&);
template void WriteTextEvent(std::ostream&, const CL::TempoScale&);
template void WriteTextEvent(std::ostream&, const CL::Marker&);
template void WriteTextEvent(std::ostream&, const CL::Caesura&);

}  // namespace zuna_core

namespace CL {

ChangeLog ReadTextForm(std::istream& is, cmn::FileVersion& stated) {
  auto form = zuna_core::ReadTextForm<ChangeLog>(is, {}, {.kind = cmn::FileKind::kLog, .any_version = true});
  stated = form.head.version;
  form.record.file_version = stated;
  return std::move(form.record);
}

}  // namespace CL
