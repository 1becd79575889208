#pragma once

// Writing the fields of records in the text form (docs/format-2.md). binary_field_writer.h tells how the
// fields of records are stated.

#include <cstdint>
#include <memory>
#include <ostream>
#include <string_view>

#include "platform/core/file/records.h"
#include "platform/core/file/versions.h"
#include "zuna_json/fields.h"

namespace zuna_core {

/// Writes fields as the members of an object.
class TextFieldWriter : public zuna_json::FieldWriter<TextFieldWriter> {
 public:
  using FieldWriter::FieldWriter;
  using FieldWriter::List;

  template <typename Parent>
  using ChildrenOf = ChildRecords<Parent>;

  void Position(std::string_view key, std::uint32_t position) { U32(key, position); }
  void PositionFrom(std::string_view key, std::uint32_t, std::uint32_t position) { U32(key, position); }

  void SongNumber(std::string_view key, std::string_view number) { Text(key, number); }
  void TrackNumber(std::string_view key, std::uint16_t number) { U16(key, number); }
  void BarNumber(std::string_view key, const TL::BarsBeats& entry) { Text(key, entry.bar_number()); }

  /// One message a line and not indented: most of a file is messages, and blanks would double it.
  template <typename Messages>
  void MessageRows(std::string_view key, const Messages& messages) {
    json().Key(key);
    json().Raw("[");
    TextMessages<Messages>::Put(json().output(), messages);
    if (!messages.empty()) json().NewLine();
    json().Raw("]");
  }

  template <typename Shared>
  void List(std::string_view key, const std::shared_ptr<Shared>& list) {
    List(key, list->events);
  }
};

/// Writes a show or a log in the text form, which states this version.
template <typename Record>
void WriteTextForm(std::ostream& os, FileKind kind, cmn::FileVersion version, const Record& record) {
  zuna_json::Writer json(os);
  TextFieldWriter fields(json);
  json.OpenObject(zuna_json::Writer::Style::kLines);
  fields.Text("kind", cmn::KindText(kind));
  fields.Text("fileVersion", cmn::VersionText(version));
  VisitFields(fields, record);
  json.CloseObject();
  json.Raw("\n");
  json.Flush();
}

}  // namespace zuna_core
