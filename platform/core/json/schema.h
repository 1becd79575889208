#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace zuna_core {

/// The layout of a JSON document as tables. A Builder is whatever takes the values; its functions return
/// null or what is wrong with the value, for a message.

template <class Builder>
struct Schema;

/// What the value of a key may be.
enum class JsonKind {
  kInteger,
  kText,    ///< a string, or {"bytes": "hex"}
  kObject,  ///< laid out as `schema`
  kList,    ///< of objects laid out as `schema`
  kRows,    ///< a list of lists of integers, one for each of `columns`
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

template <class Builder, class T>
constexpr JsonField<Builder> IntegerField(std::string_view key, void (*set)(Builder&, std::int64_t)) {
  JsonField<Builder> field{key, JsonKind::kInteger};
  field.range = kRangeOf<T>;
  field.number = set;
  return field;
}

template <class Builder>
constexpr JsonField<Builder> TextField(std::string_view key, const char* (*set)(Builder&, std::string&&)) {
  JsonField<Builder> field{key, JsonKind::kText};
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
constexpr JsonField<Builder> RowsField(std::string_view key, const JsonColumns& columns,
                                       void (*add)(Builder&, const std::int64_t*)) {
  JsonField<Builder> field{key, JsonKind::kRows};
  field.columns = &columns;
  field.row = add;
  return field;
}

}  // namespace zuna_core
