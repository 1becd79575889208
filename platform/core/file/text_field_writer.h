#pragma once

// Writing the fields of records in the text form (docs/format-2.md). binary_field_writer.h tells how the
// fields of records are stated.

#include <bit>
#include <cstdint>
#include <memory>
#include <ostream>
#include <string_view>
#include <utility>
#include <vector>

#include "kit/uuid.h"
#include "platform/core/file/records.h"
#include "platform/core/file/versions.h"
#include "platform/core/json/json_writer.h"

namespace zuna_core {

/// Writes fields as the members of an object.
class TextFieldWriter {
 public:
  explicit TextFieldWriter(JsonWriter& json) : json_(json) {}

  void U8(std::string_view key, std::uint8_t value) { Unsigned(key, value); }
  void U16(std::string_view key, std::uint16_t value) { Unsigned(key, value); }
  void U32(std::string_view key, std::uint32_t value) { Unsigned(key, value); }
  void I16(std::string_view key, std::int16_t value) { Signed(key, value); }
  void I32(std::string_view key, std::uint32_t bits) { Signed(key, static_cast<std::int32_t>(bits)); }
  void F32(std::string_view key, std::uint32_t bits) {
    json_.Key(key);
    json_.Float(std::bit_cast<float>(bits));
  }
  void Position(std::string_view key, std::uint32_t position) { U32(key, position); }
  void PositionFrom(std::string_view key, std::uint32_t, std::uint32_t position) { U32(key, position); }

  void Text(std::string_view key, std::string_view text) {
    json_.Key(key);
    json_.Text(text);
  }
  void SongNumber(std::string_view key, std::string_view number) { Text(key, number); }
  void TrackNumber(std::string_view key, std::uint16_t number) { U16(key, number); }
  void BarNumber(std::string_view key, const TL::BarsBeats& entry) { Text(key, entry.bar_number()); }
  void Identifier(std::string_view key, const kit::UUID& identifier) { Text(key, identifier.ToString()); }

  void Pair(std::string_view key, const std::pair<std::uint16_t, std::uint16_t>& pair) {
    json_.Key(key);
    json_.Raw("[");
    json_.Number(std::uint32_t{pair.first});
    json_.Raw(", ");
    json_.Number(std::uint32_t{pair.second});
    json_.Raw("]");
  }

  /// One message a line and not indented: most of a file is messages, and blanks would double it.
  template <typename Messages>
  void MessageRows(std::string_view key, const Messages& messages) {
    json_.Key(key);
    json_.Raw("[");
    TextMessages<Messages>::Put(json_.output(), messages);
    if (!messages.empty()) json_.NewLine();
    json_.Raw("]");
  }

  /// A record as an object without a key.
  template <typename T>
  void Record(const T& record, JsonWriter::Style style) {
    json_.OpenObject(style);
    VisitFields(*this, record);
    json_.CloseObject();
  }

  template <typename T>
  void Object(std::string_view key, const T& record) {
    json_.Key(key);
    Record(record, JsonWriter::Style::kLines);
  }

  /// One entry a line.
  template <typename Entry>
  void List(std::string_view key, const std::vector<Entry>& entries) {
    json_.Key(key);
    json_.OpenList();
    for (const Entry& entry : entries) {
      json_.Element();
      Record(entry, JsonWriter::Style::kOneLine);
    }
    json_.CloseList();
  }
  template <typename Shared>
  void List(std::string_view key, const std::shared_ptr<Shared>& list) {
    List(key, list->events);
  }

  template <typename Parent>
  void Children(std::string_view key, const Parent& parent) {
    json_.Key(key);
    json_.OpenList();
    for (const auto& [number, child] : ChildRecords<Parent>::Of(parent)) {
      json_.Element();
      Record(std::as_const(*child), JsonWriter::Style::kLines);
    }
    json_.CloseList();
  }

 private:
  void Unsigned(std::string_view key, std::uint32_t value) {
    json_.Key(key);
    json_.Number(value);
  }
  void Signed(std::string_view key, std::int32_t value) {
    json_.Key(key);
    json_.Number(value);
  }

  JsonWriter& json_;
};

/// Writes a show or a log in the text form.
template <typename Record>
void WriteTextForm(std::ostream& os, FileKind kind, const Record& record) {
  BufferedOutput output(os, false);
  JsonWriter json(output);
  TextFieldWriter fields(json);
  json.OpenObject(JsonWriter::Style::kLines);
  fields.Text("kind", KindText(kind));
  fields.Text("fileVersion", cmn::VersionText(kTextVersion));
  VisitFields(fields, record);
  json.CloseObject();
  json.Raw("\n");
  output.Flush();
}

}  // namespace zuna_core
