#pragma once

// Reading the fields of records in the text form (docs/format-2.md): binding them to the members of a JSON
// object. The counterpart of text_field_writer.h.

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "platform/core/file/records.h"
#include "platform/core/file/versions.h"
#include "zuna_json/fields.h"

namespace zuna_core {

/// What a text form states to be: held against what is expected.
struct TextHead {
  FileKind kind;             ///< the one that is expected
  bool any_version = false;  ///< whether it may state any current version; only that of the text form if not
  cmn::FileVersion version = {};  ///< the one that is stated
  bool is_unsupported = false;    ///< whether reading stopped at that version
};

/// Binds fields to the members of a JSON object, which is read after that.
class TextFieldBinder : public zuna_json::FieldBinder<TextFieldBinder> {
 public:
  using FieldBinder::FieldBinder;
  using FieldBinder::List;

  template <typename Parent>
  using ChildrenOf = ChildRecords<Parent>;
  template <typename Entry>
  static Entry NewEntry() {
    return Blank<Entry>::Make();
  }

  void Position(std::string_view key, std::uint32_t& position) { U32(key, position); }
  void PositionFrom(std::string_view key, std::uint32_t, std::uint32_t& position) { U32(key, position); }

  void SongNumber(std::string_view key, std::string& number) { Text(key, number); }
  void TrackNumber(std::string_view key, std::uint16_t& number) { U16(key, number); }
  void BarNumber(std::string_view key, TL::BarsBeats& entry) {
    object().Add({key, zuna_json::ValueKind::kText, &entry, &StoreBarNumber});
  }

  template <typename Messages>
  void MessageRows(std::string_view key, Messages& messages) {
    object().Add(
        {key, zuna_json::ValueKind::kRows, &messages, nullptr, nullptr, &TextMessages<Messages>::kRowType});
  }

  /// The members that state the kind and the version of a file.
  void KindAndVersion(TextHead& head) {
    object().Add({"kind", zuna_json::ValueKind::kString, &head, &StoreKind});
    object().Add({"fileVersion", zuna_json::ValueKind::kString, &head, &StoreVersion});
  }

  template <typename Shared>
  void List(std::string_view key, const std::shared_ptr<Shared>& list) {
    List(key, list->events);
  }

 private:
  // What is stored into: a TL::BarsBeats, a TextHead.
  static const char* StoreBarNumber(void* target, std::string&& text);
  static const char* StoreKind(void* target, std::string&& text);
  static const char* StoreVersion(void* target, std::string&& text);
};

/// A show or a log and what the text form states it to be.
template <typename Record>
struct TextForm {
  TextHead head;
  Record record;
};

/// Reads a show or a log in the text form. `prefix` is what has been read from the stream already. Throws
/// cmn::DataError, cmn::UnsupportedVersionError.
template <typename Record>
TextForm<Record> ReadTextForm(std::istream& is, std::string_view prefix, const TextHead& expected) {
  TextForm<Record> form{expected, {}};
  const zuna_json::ObjectType type{[](void* target, zuna_json::BoundObject& object) {
                                     auto& bound = *static_cast<TextForm<Record>*>(target);
                                     TextFieldBinder fields(object);
                                     fields.KindAndVersion(bound.head);
                                     VisitFields(fields, bound.record);
                                   },
                                   nullptr};
  try {
    zuna_json::ReadObject(is, prefix, type, &form);
  } catch (const cmn::DataError& error) {
    if (!form.head.is_unsupported) throw;
    ThrowUnsupported(form.head.kind, form.head.version, "in the text form",
                     {.field = error.field(), .offset = error.offset()});
  }
  return form;
}

}  // namespace zuna_core
