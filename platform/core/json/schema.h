#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace zuna_core {

/// The layout of a JSON document as tables. A Builder is whatever takes the values; its functions return
/// null or what is wrong with the value, for a message.

template <class Builder>
struct Schema;

/// What the value of a key may be.
enum class JsonKind {
  kInteger,
  kFloat,   ///< a number, or {"bits": 2143289344}
  kString,  ///< a string
  kText,    ///< a string, or {"bytes": "hex"}
  kObject,  ///< laid out as `schema`
  kList,    ///< of objects laid out as `schema`
  kRow,     ///< a list of integers, one for each of `columns`
  kRows,    ///< a list of such lists
};

/// Integers from `min` to `max`.
struct JsonRange {
  std::int64_t min;
  std::int64_t max;
};

template <class T>
inline constexpr JsonRange kRangeOf{std::numeric_limits<T>::min(), std::numeric_limits<T>::max()};

inline constexpr std::size_t kMaxJsonColumns = 4;
struct JsonColumns {
  std::size_t size;
  JsonRange ranges[kMaxJsonColumns];
};

template <class Builder>
struct JsonField {
  std::string_view key;
  JsonKind kind;
  JsonRange range{};
  void (*number)(Builder&, std::int64_t) = nullptr;
  void (*real)(Builder&, float) = nullptr;
  const char* (*text)(Builder&, std::string&&) = nullptr;
  const Schema<Builder>* schema = nullptr;
  const JsonColumns* columns = nullptr;
  void (*row)(Builder&, const std::int64_t*) = nullptr;
};

/// An object: each of its fields once, in any order.
template <class Builder>
struct Schema {
  const JsonField<Builder>* fields;
  std::size_t size;  ///< at most 32
  void (*begin)(Builder&) = nullptr;
  const char* (*end)(Builder&) = nullptr;
};

/// `begin` makes room for the object's values, `end` takes the whole object.
template <class Builder, std::size_t kSize>
constexpr Schema<Builder> ObjectSchema(const JsonField<Builder> (&fields)[kSize],
                                       void (*begin)(std::type_identity_t<Builder>&) = nullptr,
                                       const char* (*end)(std::type_identity_t<Builder>&) = nullptr) {
  static_assert(kSize <= 32);
  return {fields, kSize, begin, end};
}

/// Stores a value that has been checked against the range of its field.
template <class T>
void StoreNumber(T& field, std::int64_t value) {
  field = static_cast<T>(value);
}

/// Stores a text, of which any is right.
inline const char* StoreText(std::string& field, std::string&& text) {
  field = std::move(text);
  return nullptr;
}

template <class Builder>
constexpr JsonField<Builder> IntegerField(std::string_view key, JsonRange range,
                                          void (*set)(Builder&, std::int64_t)) {
  JsonField<Builder> field{key, JsonKind::kInteger};
  field.range = range;
  field.number = set;
  return field;
}

template <class Builder>
constexpr JsonField<Builder> FloatField(std::string_view key, void (*set)(Builder&, float)) {
  JsonField<Builder> field{key, JsonKind::kFloat};
  field.real = set;
  return field;
}

template <class Builder>
constexpr JsonField<Builder> TextField(std::string_view key, const char* (*set)(Builder&, std::string&&)) {
  JsonField<Builder> field{key, JsonKind::kText};
  field.text = set;
  return field;
}

/// A text that is a plain string in every document: what it is made of is settled by the format.
template <class Builder>
constexpr JsonField<Builder> StringField(std::string_view key, const char* (*set)(Builder&, std::string&&)) {
  JsonField<Builder> field{key, JsonKind::kString};
  field.text = set;
  return field;
}

template <class Builder>
constexpr JsonField<Builder> ObjectField(std::string_view key, const Schema<Builder>& schema) {
  JsonField<Builder> field{key, JsonKind::kObject};
  field.schema = &schema;
  return field;
}

template <class Builder>
constexpr JsonField<Builder> ListField(std::string_view key, const Schema<Builder>& entry) {
  JsonField<Builder> field{key, JsonKind::kList};
  field.schema = &entry;
  return field;
}

template <class Builder>
constexpr JsonField<Builder> RowField(std::string_view key, const JsonColumns& columns,
                                      void (*set)(Builder&, const std::int64_t*)) {
  JsonField<Builder> field{key, JsonKind::kRow};
  field.columns = &columns;
  field.row = set;
  return field;
}

template <class Builder>
constexpr JsonField<Builder> RowsField(std::string_view key, const JsonColumns& columns,
                                       void (*add)(Builder&, const std::int64_t*)) {
  JsonField<Builder> field{key, JsonKind::kRows};
  field.columns = &columns;
  field.row = add;
  return field;
}

}  // namespace zuna_core
