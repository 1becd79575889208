#pragma once

// Reading the fields of records in the text form (docs/format-2.md): binding them to the members of a JSON
// object. The counterpart of text_field_writer.h.

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kit/uuid.h"
#include "platform/core/file/records.h"
#include "platform/core/file/versions.h"
#include "platform/core/json/object_reader.h"

namespace zuna_core {

/// Binds fields to the members of a JSON object, which is read after that.
class TextFieldBinder {
 public:
  explicit TextFieldBinder(BoundObject& object) : object_(object) {}

  void U8(std::string_view key, std::uint8_t& value) { object_.Add({key, JsonKind::kUnsigned8, &value}); }
  void U16(std::string_view key, std::uint16_t& value) { object_.Add({key, JsonKind::kUnsigned16, &value}); }
  void U32(std::string_view key, std::uint32_t& value) { object_.Add({key, JsonKind::kUnsigned32, &value}); }
  void I16(std::string_view key, std::int16_t& value) { object_.Add({key, JsonKind::kSigned16, &value}); }
  void I32(std::string_view key, std::uint32_t& bits) { object_.Add({key, JsonKind::kBits32, &bits}); }
  void F32(std::string_view key, std::uint32_t& bits) { object_.Add({key, JsonKind::kFloat, &bits}); }
  void Position(std::string_view key, std::uint32_t& position) { U32(key, position); }
  void PositionFrom(std::string_view key, std::uint32_t, std::uint32_t& position) { U32(key, position); }

  void Text(std::string_view key, std::string& text) {
    object_.Add({key, JsonKind::kText, &text, &StoreAnyText});
  }
  void SongNumber(std::string_view key, std::string& number) { Text(key, number); }
  void TrackNumber(std::string_view key, std::uint16_t& number) { U16(key, number); }
  void BarNumber(std::string_view key, TL::BarsBeats& entry) {
    object_.Add({key, JsonKind::kText, &entry, &StoreBarNumber});
  }
  void Identifier(std::string_view key, kit::UUID& identifier) {
    object_.Add({key, JsonKind::kString, &identifier, &StoreIdentifier});
  }
  void Pair(std::string_view key, std::pair<std::uint16_t, std::uint16_t>& pair);

  template <typename Messages>
  void MessageRows(std::string_view key, Messages& messages) {
    object_.Add({key, JsonKind::kRows, &messages, nullptr, nullptr, &TextMessages<Messages>::kRowType});
  }

  /// The members that state the kind and the version of a file.
  void KindAndVersion(FileKind& kind) {
    object_.Add({"kind", JsonKind::kString, &kind, &StoreKind});
    object_.Add({"fileVersion", JsonKind::kString, &kind, &StoreVersion});
  }

  template <typename Record>
  void Object(std::string_view key, Record& record) {
    static constexpr ObjectType kType{&BindRecord<Record>, nullptr};
    object_.Add({key, JsonKind::kObject, &record, nullptr, &kType});
  }

  template <typename Entry>
  void List(std::string_view key, std::vector<Entry>& entries) {
    static constexpr ObjectType kType{&BindNewEntry<Entry>, nullptr};
    object_.Add({key, JsonKind::kList, &entries, nullptr, &kType});
  }
  template <typename Shared>
  void List(std::string_view key, const std::shared_ptr<Shared>& list) {
    List(key, list->events);
  }

  template <typename Parent>
  void Children(std::string_view key, Parent& parent) {
    static constexpr ObjectType kType{&BindNewChild<Parent>, &AddBoundChild<Parent>};
    object_.Add({key, JsonKind::kList, &parent, nullptr, &kType});
  }

 private:
  // What is stored into: a std::string, a TL::BarsBeats, a kit::UUID, a FileKind.
  static const char* StoreAnyText(void* target, std::string&& text);
  static const char* StoreBarNumber(void* target, std::string&& text);
  static const char* StoreIdentifier(void* target, std::string&& text);
  static const char* StoreKind(void* target, std::string&& text);
  static const char* StoreVersion(void* target, std::string&& text);

  template <typename Record>
  static void BindRecord(void* record, BoundObject& object) {
    TextFieldBinder fields(object);
    VisitFields(fields, *static_cast<Record*>(record));
  }

  template <typename Entry>
  static void BindNewEntry(void* entries, BoundObject& object) {
    TextFieldBinder fields(object);
    VisitFields(fields, static_cast<std::vector<Entry>*>(entries)->emplace_back(Blank<Entry>::Make()));
  }

  template <typename Parent>
  static void BindNewChild(void*, BoundObject& object) {
    const auto child = ChildRecords<Parent>::New();
    object.element = child;
    TextFieldBinder fields(object);
    VisitFields(fields, *child);
  }

  template <typename Parent>
  static const char* AddBoundChild(void* target, BoundObject& object) {
    using Of = ChildRecords<Parent>;
    using Child = typename decltype(Of::New())::element_type;
    return Of::Add(*static_cast<Parent*>(target), std::static_pointer_cast<Child>(object.element));
  }

  BoundObject& object_;
};

/// A show or a log and what the text form states it to be.
template <typename Record>
struct TextForm {
  FileKind kind;
  Record record;
};

/// Reads a show or a log in the text form. `prefix` is what has been read from the stream already. Throws
/// cmn::DataError, cmn::UnsupportedVersionError.
template <typename Record>
Record ReadTextForm(std::istream& is, std::string_view prefix, FileKind kind) {
  TextForm<Record> form{kind, {}};
  const ObjectType type{[](void* target, BoundObject& object) {
                          auto& bound = *static_cast<TextForm<Record>*>(target);
                          TextFieldBinder fields(object);
                          fields.KindAndVersion(bound.kind);
                          VisitFields(fields, bound.record);
                        },
                        nullptr};
  ReadJsonObject(is, prefix, type, &form);
  return std::move(form.record);
}

}  // namespace zuna_core
