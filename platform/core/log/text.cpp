// The text form of a log (docs/format-2.md). The fields of all records are in log/fields.h.

#include "platform/core/log/file.h"

#include "platform/core/file/text_field_binder.h"
#include "platform/core/file/text_field_writer.h"
#include "platform/core/log/fields.h"

namespace zuna_core {

void WriteTextLog(std::ostream& os, const CL::ChangeLog& log) { WriteTextForm(os, FileKind::kLog, log); }

CL::ChangeLog ReadTextLog(std::istream& is, std::string_view prefix) {
  return ReadTextForm<CL::ChangeLog>(is, prefix, FileKind::kLog);
}

template <typename Event>
void WriteTextEvent(BufferedOutput& output, const Event& event) {
  JsonWriter json(output);
  TextFieldWriter(json).Record(event, JsonWriter::Style::kOneLine);
}
template void WriteTextEvent(BufferedOutput&, const CL::PairedEvent&);
template void WriteTextEvent(BufferedOutput&, const CL::TempoScale&);
template void WriteTextEvent(BufferedOutput&, const CL::Marker&);
template void WriteTextEvent(BufferedOutput&, const CL::Caesura&);

}  // namespace zuna_core
