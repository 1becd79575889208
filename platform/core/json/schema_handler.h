#pragma once

#include <array>
#include <bit>
#include <boost/json/error.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "kit/format.h"
#include "kit/hex.h"
#include "platform/core/json/float_text.h"
#include "platform/core/json/schema.h"
#include "platform/core/text/quote.h"

namespace zuna_core {

/// Takes the events of Boost.JSON's basic_parser, holds them against a schema and hands the values to a
/// builder. At the first thing that does not fit it stops the parser; problem() tells what and where then.
template <class Builder>
class SchemaHandler {
 public:
  using Code = boost::json::error_code;
  using Part = boost::json::string_view;

  static constexpr std::size_t max_object_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_array_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_string_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_key_size = static_cast<std::size_t>(-1);

  SchemaHandler(const Schema<Builder>& root, Builder& builder) : root_(root), builder_(builder) {}

  const std::string& problem() const { return problem_; }

  /// Where the parser is: songs[3].voices[0].messages[17]
  std::string Path() const;

  bool on_document_begin(Code&) { return true; }
  bool on_document_end(Code&) { return true; }
  bool on_object_begin(Code& code);
  bool on_object_end(std::size_t, Code& code);
  bool on_array_begin(Code& code);
  bool on_array_end(std::size_t, Code& code);
  bool on_key_part(Part part, std::size_t, Code&) { return Append(part); }
  bool on_key(Part part, std::size_t, Code& code);
  bool on_string_part(Part part, std::size_t, Code&) { return Append(part); }
  bool on_string(Part part, std::size_t, Code& code);
  bool on_number_part(Part part, Code&) { return Due(JsonKind::kFloat) == nullptr || Append(part); }
  bool on_int64(std::int64_t value, Part part, Code& code) {
    // The integers of rows are nearly all that a document has.
    if (column_ >= columns_->size || !Within(columns_->ranges[column_], value)) {
      return Integer(value, part, code);
    }
    row_[column_++] = value;
    return true;
  }
  bool on_uint64(std::uint64_t, Part part, Code& code) { return Float(part, code); }  // above 2^63
  bool on_double(double, Part part, Code& code) { return Float(part, code); }
  bool on_bool(bool, Code& code) { return Unexpected(code); }
  bool on_null(Code& code) { return Unexpected(code); }
  bool on_comment_part(Part, Code&) { return true; }
  bool on_comment(Part, Code&) { return true; }

 private:
  using Field = JsonField<Builder>;

  /// kRow is a row, or a list of rows inside one of them: a row in a list is short and frequent, and has no
  /// frame of its own. kBits and kBytes are the objects that stand for a float, respectively a text.
  enum class Level { kObject, kList, kRows, kRow, kBits, kBytes };

  struct Frame {
    Level level;
    const Field* owner = nullptr;             ///< the field that this is the value of; none for an entry
    const Schema<Builder>* schema = nullptr;  ///< of an object, or of the entries of a list
    const Field* field = nullptr;             ///< of an object: the one whose value is due or was the last
    std::uint32_t seen = 0;                   ///< of an object: a bit for each field
    std::size_t index = 0;                    ///< the entry of a list
  };

  static constexpr JsonColumns kNoColumns{};
  static constexpr JsonRange kBitsRange = kRangeOf<std::uint32_t>;

  // The schema bounds the depth, so that frames need no memory of their own.
  static constexpr std::size_t kMaxFrames = 16;

  Frame& top() { return frames_[depth_ - 1]; }
  const Frame& top() const { return frames_[depth_ - 1]; }
  void Push(const Frame& frame) { frames_.at(depth_++) = frame; }
  void Pop() { --depth_; }

  /// The field whose value is due, if it is of this kind.
  const Field* Due(JsonKind kind) const {
    const bool due = depth_ != 0 && top().level == Level::kObject && top().field->kind == kind;
    return due ? top().field : nullptr;
  }

  bool BeginObject(const Schema<Builder>& schema, const Field* owner) {
    Push({Level::kObject, owner, &schema});
    if (schema.begin != nullptr) schema.begin(builder_);
    return true;
  }

  bool Append(Part part) {
    text_.append(part.data(), part.size());
    return true;
  }

  bool BeginRow(const JsonColumns& columns) {
    columns_ = &columns;
    column_ = 0;
    return true;
  }

  /// Whether a frame is a list of rows, inside one of them or not.
  static bool IsInRows(const Frame& frame) {
    return frame.owner != nullptr && frame.owner->kind == JsonKind::kRows;
  }

  /// Whether the value that is read is the only one of an object that stands for another value.
  bool Inside(Level level) const { return depth_ != 0 && top().level == level; }

  static bool Within(const JsonRange& range, std::int64_t value) {
    return value >= range.min && value <= range.max;
  }

  /// Takes an integer outside of rows, or refuses one that does not fit into its row.
  bool Integer(std::int64_t value, Part part, Code& code);
  bool Float(Part part, Code& code);
  bool Text(Code& code);
  bool EndBits(Code& code);
  bool EndBytes(Code& code);
  bool CheckOnlyKey(const char* known, const std::string& key, Code& code);
  bool Fail(Code& code, std::string what);
  bool Unexpected(Code& code) { return Fail(code, Expected() + " is due here"); }
  std::string Expected() const;

  const Schema<Builder>& root_;
  Builder& builder_;
  std::array<Frame, kMaxFrames> frames_{};
  std::size_t depth_ = 0;
  std::array<std::int64_t, kMaxJsonColumns> row_{};
  const JsonColumns* columns_ = &kNoColumns;  ///< of the row
  std::size_t column_ = 0;                    ///< the one whose integer is due
  std::string text_;                          ///< of a key, a text or a number, as far as it has been read
  std::string bytes_;                         ///< that {"bytes": ...} has stated
  std::uint32_t bits_ = 0;
  std::string problem_;
};

template <class Builder>
bool SchemaHandler<Builder>::on_object_begin(Code& code) {
  if (depth_ == 0) return BeginObject(root_, nullptr);
  if (top().level == Level::kList) return BeginObject(*top().schema, nullptr);
  if (const Field* field = Due(JsonKind::kObject)) return BeginObject(*field->schema, field);
  const Field* const real = Due(JsonKind::kFloat);
  const Field* const text = Due(JsonKind::kText);
  if (real == nullptr && text == nullptr) return Unexpected(code);
  Push(real != nullptr ? Frame{Level::kBits, real} : Frame{Level::kBytes, text});
  return true;
}

template <class Builder>
bool SchemaHandler<Builder>::on_object_end(std::size_t, Code& code) {
  const Frame& frame = top();
  if (frame.level == Level::kBits) return EndBits(code);
  if (frame.level == Level::kBytes) return EndBytes(code);
  const Schema<Builder>& schema = *frame.schema;
  for (std::size_t i = 0; i < schema.size; ++i) {
    if ((frame.seen >> i & 1) == 0) {
      top().field = nullptr;
      return Fail(code, "the key " + Quote(schema.fields[i].key) + " is missing");
    }
  }
  if (schema.end != nullptr) {
    top().field = nullptr;
    if (const char* problem = schema.end(builder_)) return Fail(code, problem);
  }
  Pop();
  if (depth_ != 0 && top().level == Level::kList) ++top().index;
  return true;
}

template <class Builder>
bool SchemaHandler<Builder>::EndBits(Code& code) {
  if (top().seen == 0) return Fail(code, "the key \"bits\" is missing");
  top().owner->real(builder_, std::bit_cast<float>(bits_));
  Pop();
  return true;
}

template <class Builder>
bool SchemaHandler<Builder>::EndBytes(Code& code) {
  if (top().seen == 0) return Fail(code, "the key \"bytes\" is missing");
  Pop();
  text_ = std::exchange(bytes_, {});
  return Text(code);
}

template <class Builder>
bool SchemaHandler<Builder>::on_array_begin(Code& code) {
  if (Inside(Level::kRows)) {
    top().level = Level::kRow;
    return BeginRow(*top().owner->columns);
  }
  if (const Field* field = Due(JsonKind::kRow)) {
    Push({Level::kRow, field});
    return BeginRow(*field->columns);
  }
  if (const Field* field = Due(JsonKind::kList)) {
    Push({Level::kList, field, field->schema});
    return true;
  }
  if (const Field* field = Due(JsonKind::kRows)) {
    Push({Level::kRows, field});
    return true;
  }
  return Unexpected(code);
}

template <class Builder>
bool SchemaHandler<Builder>::on_array_end(std::size_t, Code& code) {
  Frame& frame = top();
  if (frame.level != Level::kRow) {
    Pop();
    return true;
  }
  if (column_ != columns_->size) return Fail(code, kit::format("%zu integers are due here", columns_->size));
  frame.owner->row(builder_, row_.data());
  columns_ = &kNoColumns;
  if (frame.owner->kind == JsonKind::kRow) {
    Pop();
    return true;
  }
  frame.level = Level::kRows;
  ++frame.index;
  return true;
}

template <class Builder>
bool SchemaHandler<Builder>::on_key(Part part, std::size_t, Code& code) {
  Append(part);
  Frame& frame = top();
  const std::string key = std::exchange(text_, {});
  if (frame.level == Level::kBits) return CheckOnlyKey("bits", key, code);
  if (frame.level == Level::kBytes) return CheckOnlyKey("bytes", key, code);
  for (std::size_t i = 0; i < frame.schema->size; ++i) {
    if (frame.schema->fields[i].key != key) continue;
    frame.field = &frame.schema->fields[i];
    if ((frame.seen >> i & 1) != 0) return Fail(code, "the key occurs twice");
    frame.seen |= std::uint32_t{1} << i;
    return true;
  }
  frame.field = nullptr;
  return Fail(code, "the key " + Quote(key) + " is not known");
}

/// Takes the key of an object that stands for a value.
template <class Builder>
bool SchemaHandler<Builder>::CheckOnlyKey(const char* known, const std::string& key, Code& code) {
  if (key != known) return Fail(code, "the key " + Quote(key) + " is not known");
  if (top().seen++ != 0) return Fail(code, kit::format("the key \"%s\" occurs twice", known));
  return true;
}

template <class Builder>
bool SchemaHandler<Builder>::on_string(Part part, std::size_t, Code& code) {
  Append(part);
  if (Inside(Level::kBytes)) {
    std::optional<std::string> bytes = kit::DecodeHex(std::exchange(text_, {}));
    if (!bytes) return Fail(code, "pairs of hexadecimal digits are due here");
    bytes_ = std::move(*bytes);
    return true;
  }
  return Text(code);
}

/// Hands text_ to the field that it is the value of.
template <class Builder>
bool SchemaHandler<Builder>::Text(Code& code) {
  const Field* field = Due(JsonKind::kText);
  if (field == nullptr) field = Due(JsonKind::kString);
  if (field == nullptr) return Unexpected(code);
  if (const char* problem = field->text(builder_, std::exchange(text_, {}))) return Fail(code, problem);
  return true;
}

template <class Builder>
bool SchemaHandler<Builder>::Integer(std::int64_t value, Part part, Code& code) {
  if (Inside(Level::kBits) && Within(kBitsRange, value)) {
    bits_ = static_cast<std::uint32_t>(value);
    return true;
  }
  const Field* field = Due(JsonKind::kInteger);
  if (field == nullptr) return Float(part, code);
  if (!Within(field->range, value)) return Unexpected(code);
  field->number(builder_, value);
  return true;
}

/// Takes a number that is no integer of 64 bits, or where a float is due. It is read from its text: the
/// parser's double would be rounded once more.
template <class Builder>
bool SchemaHandler<Builder>::Float(Part part, Code& code) {
  const Field* field = Due(JsonKind::kFloat);
  if (field == nullptr) return Unexpected(code);
  Append(part);
  const std::optional<float> value = ParseFloat(std::exchange(text_, {}));
  if (!value) return Unexpected(code);
  field->real(builder_, *value);
  return true;
}

template <class Builder>
bool SchemaHandler<Builder>::Fail(Code& code, std::string what) {
  problem_ = std::move(what);
  code = boost::json::error::syntax;
  return false;
}

template <class Builder>
std::string SchemaHandler<Builder>::Expected() const {
  const auto integer = [](const JsonRange& range) {
    return kit::format("an integer from %lld to %lld", static_cast<long long>(range.min),
                       static_cast<long long>(range.max));
  };
  if (depth_ == 0) return "an object";
  const Frame& frame = top();
  switch (frame.level) {
    case Level::kList:
      return "an object";
    case Level::kRows:
      return "a list of integers";
    case Level::kBits:
      return integer(kBitsRange);
    case Level::kBytes:
      return "a text";
    case Level::kRow: {
      const JsonColumns& columns = *frame.owner->columns;
      return column_ < columns.size ? integer(columns.ranges[column_]) : "the end of the list";
    }
    case Level::kObject:
      break;
  }
  switch (frame.field->kind) {
    case JsonKind::kInteger:
      return integer(frame.field->range);
    case JsonKind::kFloat:
      return "a number in the range of a single-precision float, or {\"bits\": N},";
    case JsonKind::kString:
    case JsonKind::kText:
      return "a text";
    case JsonKind::kObject:
      return "an object";
    case JsonKind::kRow:
      return "a list of integers";
    case JsonKind::kList:
    case JsonKind::kRows:
      break;
  }
  return "a list";
}

template <class Builder>
std::string SchemaHandler<Builder>::Path() const {
  std::string path;
  for (std::size_t i = 0; i < depth_; ++i) {
    const Frame& frame = frames_[i];
    if (frame.level == Level::kObject && frame.field != nullptr) {
      path.append(path.empty() ? "" : ".").append(frame.field->key);
    } else if (frame.level == Level::kList || IsInRows(frame)) {
      path += kit::format("[%zu]", frame.index);
    }
    if (frame.level == Level::kRow) path += kit::format("[%zu]", column_);
  }
  return path;
}

}  // namespace zuna_core
