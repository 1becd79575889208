#pragma once

// Reading JSON objects into variables that their members are bound to when an object begins.

#include <array>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace zuna_core {

class BoundObject;

/// What the value of a key may be, and the type of what it is read into.
enum class JsonKind : std::uint8_t {
  kUnsigned8,
  kUnsigned16,
  kUnsigned32,
  kSigned16,
  kBits32,  ///< into std::uint32_t: an integer of 32 bits, signed or unsigned
  kFloat,   ///< into std::uint32_t: the bits of a float; a number, or {"bits": 2143289344}
  kString,  ///< a string
  kText,    ///< a string, or {"bytes": "hex"}
  kObject,
  kList,  ///< of objects
  kRow,   ///< a list of integers, one for each column
  kRows,  ///< a list of such lists
};

/// The integers from `min` to `max`.
struct IntegerRange {
  std::int64_t min;
  std::int64_t max;
};

/// The range of {"bits": N}.
inline constexpr IntegerRange kBitsRange{0, 0xFFFFFFFF};

inline bool Holds(const IntegerRange& range, std::int64_t value) {
  return value >= range.min && value <= range.max;
}

/// The integers that a value of this kind may be; none for other kinds.
std::optional<IntegerRange> RangeOf(JsonKind kind);

/// What an integer, or the value of a member of this kind, must be, for a message.
std::string IntegerText(const IntegerRange& range);
std::string ValueText(JsonKind kind);

/// Takes a text into `target`. Returns null, or what is wrong with the text, for a message.
using StoreText = const char* (*)(void* target, std::string&& text);

/// How an object is read, or each of the objects in a list.
struct ObjectType {
  /// Binds the members of the object. `target` is what the object, or the list, is read into.
  void (*begin)(void* target, BoundObject& object);
  /// Takes the object when all members have been read; may be null. Returns null, or what is wrong.
  const char* (*end)(void* target, BoundObject& object);
};

inline constexpr std::size_t kMaxColumns = 4;
using JsonRow = std::array<std::uint32_t, kMaxColumns>;

/// How a row of integers is read, or rows: columns from 0 to a maximum each.
struct RowType {
  std::size_t columns;
  JsonRow maxima;
  void (*take)(void* target, const JsonRow* rows, std::size_t count);
};

/// A key and what its value is read into.
struct BoundMember {
  std::string_view key;
  JsonKind kind;
  void* target;
  StoreText store = nullptr;           ///< of kString and kText
  const ObjectType* object = nullptr;  ///< of kObject and kList
  const RowType* rows = nullptr;       ///< of kRow and kRows
};

/// Stores an integer, which is in the range of its member.
void StoreInteger(const BoundMember& member, std::int64_t value);

/// The members of an object, all of which must be present once, in any order.
class BoundObject {
 public:
  static constexpr std::size_t kMaxMembers = 16;

  /// The element of the list that the object is read into, until the list takes it.
  std::shared_ptr<void> element;

  void Clear() {
    size_ = 0;
    element.reset();
  }
  void Add(const BoundMember& member) { members_.at(size_++) = member; }

  std::size_t size() const { return size_; }
  const BoundMember& operator[](std::size_t index) const { return members_[index]; }

 private:
  std::array<BoundMember, kMaxMembers> members_;  // only the first size_ are initialised
  std::size_t size_ = 0;
};

/// Reads the JSON object that `prefix` (what was read before) and the rest of the stream are. Throws
/// cmn::DataError with the path, as in songs[3].voices[0].messages[17], and the offset in bytes.
void ReadJsonObject(std::istream& is, std::string_view prefix, const ObjectType& root, void* target);

}  // namespace zuna_core
