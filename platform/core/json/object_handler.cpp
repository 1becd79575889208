// The events of the JSON parser, held against the members that an object is bound to.

#include "platform/core/json/object_handler.h"

#include <bit>
#include <optional>
#include <utility>

#include "kit/format.h"
#include "kit/hex.h"
#include "kit/nearest.h"
#include "platform/core/bytes/quote.h"
#include "platform/core/json/numbers.h"

namespace zuna_json {

ObjectHandler::Frame& ObjectHandler::Push(Level level, const BoundMember* owner) {
  Frame& frame = frames_.at(depth_++);
  frame.level = level;
  frame.owner = owner;
  frame.member = nullptr;
  frame.next = 0;
  frame.seen = 0;
  frame.key_seen = false;
  frame.index = 0;
  return frame;
}

bool ObjectHandler::BeginObject(const ObjectType& type, void* target, const BoundMember* owner) {
  Frame& frame = Push(Level::kObject, owner);
  frame.type = &type;
  frame.target = target;
  type.begin(target, frame.object);
  return true;
}

bool ObjectHandler::on_object_begin(Code& code) {
  if (depth_ == 0) return BeginObject(root_, root_target_, nullptr);
  if (Inside(Level::kList)) {
    const BoundMember& list = *top().owner;
    return BeginObject(*list.object, list.target, nullptr);
  }
  if (const BoundMember* member = Expecting(ValueKind::kObject)) {
    return BeginObject(*member->object, member->target, member);
  }
  if (const BoundMember* member = Expecting(ValueKind::kFloat)) {
    Push(Level::kBits, member);
    return true;
  }
  if (const BoundMember* member = Expecting(ValueKind::kText)) {
    Push(Level::kBytes, member);
    return true;
  }
  return Unexpected(code);
}

bool ObjectHandler::on_object_end(std::size_t, Code& code) {
  Frame& frame = top();
  if (frame.level == Level::kBits) return EndBits(code);
  if (frame.level == Level::kBytes) return EndBytes(code);
  frame.member = nullptr;
  for (std::size_t i = 0; i < frame.object.size(); ++i) {
    if ((frame.seen >> i & 1) == 0) return Fail(code, "missing key " + zuna_core::Quote(frame.object[i].key));
  }
  if (frame.type->end != nullptr) {
    if (const char* problem = frame.type->end(frame.target, frame.object)) return Fail(code, problem);
  }
  Pop();
  if (Inside(Level::kList)) ++top().index;
  return true;
}

bool ObjectHandler::EndBits(Code& code) {
  if (!top().key_seen) return Fail(code, "missing key \"bits\"");
  StoreFloat(*top().owner, bits_);
  Pop();
  return true;
}

bool ObjectHandler::EndBytes(Code& code) {
  if (!top().key_seen) return Fail(code, "missing key \"bytes\"");
  Pop();
  text_ = std::exchange(bytes_, {});
  return Text(code);
}

bool ObjectHandler::BeginRow(const RowType& type) {
  columns_ = type.columns;
  maxima_ = type.maxima;
  column_ = 0;
  return true;
}

bool ObjectHandler::on_array_begin(Code& code) {
  if (Inside(Level::kRows)) {
    top().level = Level::kRow;
    return BeginRow(*top().owner->rows);
  }
  if (const BoundMember* member = Expecting(ValueKind::kRow)) {
    Push(Level::kRow, member);
    return BeginRow(*member->rows);
  }
  if (const BoundMember* member = Expecting(ValueKind::kList)) {
    Push(Level::kList, member);
    return true;
  }
  if (const BoundMember* member = Expecting(ValueKind::kRows)) {
    Push(Level::kRows, member);
    return true;
  }
  return Unexpected(code);
}

bool ObjectHandler::on_array_end(std::size_t, Code& code) {
  Frame& frame = top();
  if (frame.level == Level::kRow) {
    if (column_ != columns_) return Fail(code, kit::format("expected %zu integers", columns_));
    const std::size_t columns = std::exchange(columns_, 0);
    if (frame.owner->kind == ValueKind::kRows) {
      rows_.insert(rows_.end(), row_.begin(), row_.begin() + static_cast<std::ptrdiff_t>(columns));
      frame.level = Level::kRows;
      ++frame.index;
      return true;
    }
    frame.owner->rows->take(frame.owner->target, row_.data(), 1);
  } else if (frame.level == Level::kRows) {
    const RowType& type = *frame.owner->rows;
    type.take(frame.owner->target, rows_.data(), rows_.size() / type.columns);
    rows_.clear();
  }
  Pop();
  return true;
}

bool ObjectHandler::on_key(Part part, std::size_t, Code& code) {
  std::string_view key(part.data(), part.size());
  if (!text_.empty()) {
    Append(part);
    key = text_;
  }
  const bool known = FindMember(key, code);
  text_.clear();
  return known;
}

/// The keys of an object that have not been there yet.
std::vector<std::string> ObjectHandler::UnseenKeys(const Frame& frame) {
  std::vector<std::string> keys;
  for (std::size_t i = 0; i < frame.object.size(); ++i) {
    if ((frame.seen >> i & 1) == 0) keys.emplace_back(frame.object[i].key);
  }
  return keys;
}

/// What may stand in the place of an unknown key: one that looks like it, or all that are left.
std::string ObjectHandler::HintAtKeys(std::string_view unknown, const Frame& frame) {
  const std::vector<std::string> keys = UnseenKeys(frame);
  std::string hint = kit::Suggestion(unknown, keys);
  if (!hint.empty()) return hint;
  for (const std::string& key : keys) hint += (hint.empty() ? "; expected \"" : ", \"") + key + '"';
  return hint;
}

bool ObjectHandler::FindMember(std::string_view key, Code& code) {
  Frame& frame = top();
  if (frame.level == Level::kBits) return OnlyKey("bits", key, code);
  if (frame.level == Level::kBytes) return OnlyKey("bytes", key, code);
  // Keys are mostly in order, so the search begins after the last one.
  for (std::size_t tried = 0; tried < frame.object.size(); ++tried, ++frame.next) {
    if (frame.next >= frame.object.size()) frame.next = 0;
    if (frame.object[frame.next].key != key) continue;
    frame.member = &frame.object[frame.next];
    const std::uint32_t bit = std::uint32_t{1} << frame.next++;
    if ((frame.seen & bit) != 0) return Fail(code, "duplicate key");
    frame.seen |= bit;
    return true;
  }
  frame.member = nullptr;
  return Fail(code, "unknown key " + zuna_core::Quote(key) + HintAtKeys(key, frame));
}

/// Takes the key of an object that states a float or a text.
bool ObjectHandler::OnlyKey(std::string_view known, std::string_view key, Code& code) {
  if (key != known) return Fail(code, "unknown key " + zuna_core::Quote(key));
  if (top().key_seen) return Fail(code, "duplicate key " + zuna_core::Quote(known));
  top().key_seen = true;
  return true;
}

bool ObjectHandler::on_string(Part part, std::size_t, Code& code) {
  Append(part);
  if (!Inside(Level::kBytes)) return Text(code);
  std::optional<std::string> bytes = kit::DecodeHex(text_);
  text_.clear();
  if (!bytes) return Fail(code, "expected pairs of hexadecimal digits");
  bytes_ = std::move(*bytes);
  return true;
}

/// Stores text_ as the value of a member.
bool ObjectHandler::Text(Code& code) {
  const BoundMember* member = Expecting(ValueKind::kText);
  if (member == nullptr) member = Expecting(ValueKind::kString);
  if (member == nullptr) return Unexpected(code);
  const char* problem = member->store(member->target, std::move(text_));
  text_.clear();
  if (problem != nullptr) return Fail(code, problem);
  return true;
}

/// Takes an integer outside of rows, or refuses one that does not fit into its row.
bool ObjectHandler::Integer(std::int64_t value, Part part, Code& code) {
  if (Inside(Level::kBits) && Holds(kBitsRange, value)) {
    bits_ = static_cast<std::uint32_t>(value);
    return true;
  }
  if (!Inside(Level::kObject)) return Unexpected(code);
  const std::optional<IntegerRange> range = RangeOf(top().member->kind);
  if (!range) return Float(part, code);
  if (!Holds(*range, value)) return Unexpected(code);
  StoreInteger(*top().member, value);
  return true;
}

/// Takes a number that is no integer of 64 bits, or where a float is expected. It is read from its text: the
/// parser's double would be rounded twice.
bool ObjectHandler::Float(Part part, Code& code) {
  const BoundMember* member = Expecting(ValueKind::kFloat);
  if (member == nullptr) return Unexpected(code);
  Append(part);
  const std::optional<float> value = ParseFloat(text_);
  text_.clear();
  if (!value) return Unexpected(code);
  StoreFloat(*member, std::bit_cast<std::uint32_t>(*value));
  return true;
}

bool ObjectHandler::Fail(Code& code, std::string problem) {
  problem_ = std::move(problem);
  code = boost::json::error::syntax;
  return false;
}

}  // namespace zuna_json
