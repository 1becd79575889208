#pragma once

// Records as JSON objects, each field stated once. A function VisitFields(fields, record), in the namespace
// of the program, calls a function of `fields` for each field of a record. `fields` is a class that derives
// from FieldWriter to write, or from FieldBinder to read; both call VisitFields() again for the records
// inside a record. Not part of the contract with the converter: a product that replaces platform/ for the
// converter alone need not supply it.
//
// A Derived class provides what its records need besides:
//   ChildrenOf<Parent>   the records that a Parent holds by number, each of its own:
//     Of(parent)          the map that holds them
//     New()               a shared pointer to a record that is to be filled
//     Add(parent, child)  adds a record; returns null, or what is wrong, for a message
//   NewEntry<Entry>()    (FieldBinder) an entry of a list that is to be filled

#include <bit>
#include <concepts>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "kit/uuid.h"
#include "zuna_json/object.h"
#include "zuna_json/writer.h"

namespace zuna_json {

/// A record that is read or, where it is const, written.
template <typename T, typename Record>
concept MaybeConst = std::same_as<std::remove_const_t<T>, Record>;

/// Writes fields as the members of an object.
template <typename Derived>
class FieldWriter {
 public:
  /// Writes with `json`, which must outlive this.
  explicit FieldWriter(Writer& json) : json_(json) {}

  /// A field under `key`: an integer of as many bits as the name says, unsigned (U) or signed (I), where I32
  /// takes the bits; a float, or its bits; a text; an identifier; a list of two integers.
  ///@{
  void U8(std::string_view key, std::uint8_t value) { Unsigned(key, value); }
  void U16(std::string_view key, std::uint16_t value) { Unsigned(key, value); }
  void U32(std::string_view key, std::uint32_t value) { Unsigned(key, value); }
  void I8(std::string_view key, std::int8_t value) { Signed(key, value); }
  void I16(std::string_view key, std::int16_t value) { Signed(key, value); }
  void I32(std::string_view key, std::uint32_t bits) { Signed(key, static_cast<std::int32_t>(bits)); }
  void F32(std::string_view key, float value) {
    json_.Key(key);
    json_.Float(value);
  }
  void F32(std::string_view key, std::uint32_t bits) { F32(key, std::bit_cast<float>(bits)); }

  void Text(std::string_view key, std::string_view text) {
    json_.Key(key);
    json_.Text(text);
  }

  void Identifier(std::string_view key, const kit::UUID& identifier) { Text(key, identifier.ToString()); }

  void Pair(std::string_view key, const std::pair<std::uint16_t, std::uint16_t>& pair) {
    json_.Key(key);
    json_.Raw("[");
    json_.Number(std::uint32_t{pair.first});
    json_.Raw(", ");
    json_.Number(std::uint32_t{pair.second});
    json_.Raw("]");
  }
  ///@}

  /// A record as an object without a key.
  template <typename T>
  void Record(const T& record, Writer::Style style) {
    json_.OpenObject(style);
    VisitFields(static_cast<Derived&>(*this), record);
    json_.CloseObject();
  }

  /// A record as an object.
  template <typename T>
  void Object(std::string_view key, const T& record) {
    json_.Key(key);
    Record(record, Writer::Style::kLines);
  }

  /// A list of records, one a line.
  template <typename Entry>
  void List(std::string_view key, const std::vector<Entry>& entries) {
    json_.Key(key);
    json_.OpenList();
    for (const Entry& entry : entries) {
      json_.Element();
      Record(entry, Writer::Style::kOneLine);
    }
    json_.CloseList();
  }

  /// The records that `parent` holds by number, as a list of objects.
  template <typename Parent>
  void Children(std::string_view key, const Parent& parent) {
    json_.Key(key);
    json_.OpenList();
    for (const auto& [number, child] : Derived::template ChildrenOf<Parent>::Of(parent)) {
      json_.Element();
      Record(Pointee(child), Writer::Style::kLines);
    }
    json_.CloseList();
  }

 protected:
  /// For what a Derived class writes itself.
  Writer& json() { return json_; }

 private:
  template <typename T>
  static const T& Pointee(const std::shared_ptr<T>& pointer) {
    return *pointer;
  }
  template <typename T>
  static const T& Pointee(const T& record) {
    return record;
  }

  void Unsigned(std::string_view key, std::uint32_t value) {
    json_.Key(key);
    json_.Number(value);
  }
  void Signed(std::string_view key, std::int32_t value) {
    json_.Key(key);
    json_.Number(value);
  }

  Writer& json_;
};

/// Binds fields to the members of a JSON object, which is read after that.
template <typename Derived>
class FieldBinder {
 public:
  /// Adds the members to `object`.
  explicit FieldBinder(BoundObject& object) : object_(object) {}

  /// The counterparts of the functions of FieldWriter. What is bound must stay where it is until the object
  /// has been read.
  ///@{
  void U8(std::string_view key, std::uint8_t& value) { object_.Add({key, ValueKind::kUnsigned8, &value}); }
  void U16(std::string_view key, std::uint16_t& value) { object_.Add({key, ValueKind::kUnsigned16, &value}); }
  void U32(std::string_view key, std::uint32_t& value) { object_.Add({key, ValueKind::kUnsigned32, &value}); }
  void I8(std::string_view key, std::int8_t& value) { object_.Add({key, ValueKind::kSigned8, &value}); }
  void I16(std::string_view key, std::int16_t& value) { object_.Add({key, ValueKind::kSigned16, &value}); }
  void I32(std::string_view key, std::uint32_t& bits) { object_.Add({key, ValueKind::kBits32, &bits}); }
  void F32(std::string_view key, float& value) { object_.Add({key, ValueKind::kFloat, &value}); }
  void F32(std::string_view key, std::uint32_t& bits) { object_.Add({key, ValueKind::kFloat, &bits}); }

  void Text(std::string_view key, std::string& text) {
    object_.Add({key, ValueKind::kText, &text, [](void* target, std::string&& value) -> const char* {
                   *static_cast<std::string*>(target) = std::move(value);
                   return nullptr;
                 }});
  }

  void Identifier(std::string_view key, kit::UUID& identifier) {
    object_.Add({key, ValueKind::kString, &identifier, &StoreIdentifier});
  }

  void Pair(std::string_view key, std::pair<std::uint16_t, std::uint16_t>& pair) {
    static constexpr RowType kType{
        2, {0xFFFF, 0xFFFF}, [](void* target, const std::uint32_t* values, std::size_t) {
          *static_cast<std::pair<std::uint16_t, std::uint16_t>*>(target) = {
              static_cast<std::uint16_t>(values[0]), static_cast<std::uint16_t>(values[1])};
        }};
    object_.Add({key, ValueKind::kRow, &pair, nullptr, nullptr, &kType});
  }

  template <typename Record>
  void Object(std::string_view key, Record& record) {
    static constexpr ObjectType kType{&BindRecord<Record>, nullptr};
    object_.Add({key, ValueKind::kObject, &record, nullptr, &kType});
  }

  template <typename Entry>
  void List(std::string_view key, std::vector<Entry>& entries) {
    static constexpr ObjectType kType{&BindNewEntry<Entry>, nullptr};
    object_.Add({key, ValueKind::kList, &entries, nullptr, &kType});
  }

  template <typename Parent>
  void Children(std::string_view key, Parent& parent) {
    static constexpr ObjectType kType{&BindNewChild<Parent>, &AddBoundChild<Parent>};
    object_.Add({key, ValueKind::kList, &parent, nullptr, &kType});
  }
  ///@}

 protected:
  /// For what a Derived class binds itself.
  BoundObject& object() { return object_; }

 private:
  static const char* StoreIdentifier(void* target, std::string&& text) {
    try {
      *static_cast<kit::UUID*>(target) = kit::UUID::FromString(text);
    } catch (const std::invalid_argument&) {
      return "expected an identifier such as \"00112233-4455-6677-8899-aabbccddeeff\"";
    }
    return nullptr;
  }

  template <typename Record>
  static void BindRecord(void* record, BoundObject& object) {
    Derived fields(object);
    VisitFields(fields, *static_cast<Record*>(record));
  }

  template <typename Entry>
  static void BindNewEntry(void* entries, BoundObject& object) {
    Derived fields(object);
    VisitFields(fields,
                static_cast<std::vector<Entry>*>(entries)->emplace_back(Derived::template NewEntry<Entry>()));
  }

  template <typename Parent>
  static void BindNewChild(void*, BoundObject& object) {
    const auto child = Derived::template ChildrenOf<Parent>::New();
    object.element = child;
    Derived fields(object);
    VisitFields(fields, *child);
  }

  template <typename Parent>
  static const char* AddBoundChild(void* target, BoundObject& object) {
    using Of = typename Derived::template ChildrenOf<Parent>;
    using Child = typename decltype(Of::New())::element_type;
    return Of::Add(*static_cast<Parent*>(target), std::static_pointer_cast<Child>(object.element));
  }

  BoundObject& object_;
};

}  // namespace zuna_json
