#pragma once

// Reading JSON objects into variables that their members are bound to when an object begins. Not part of the
// contract with the converter: a product that replaces platform/ for the converter alone need not supply it.

#include <array>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

#include "kit/api.h"

namespace zuna_json {

class BoundObject;

/// What the value of a key may be, and the type of what it is read into.
enum class ValueKind : std::uint8_t {
  kUnsigned8,
  kUnsigned16,
  kUnsigned32,
  kSigned8,
  kSigned16,
  kBits32,  ///< into std::uint32_t: an integer of 32 bits, signed or unsigned
  kFloat,   ///< into a float or its bits: a number, or {"bits": 2143289344}
  kString,  ///< a string
  kText,    ///< a string, or {"bytes": "hex"}
  kObject,
  kList,  ///< of objects
  kRow,   ///< a list of integers, one for each column
  kRows,  ///< a list of such lists
};

/// Takes a text into `target`. Returns null, or what is wrong with the text, for a message.
using StoreText = const char* (*)(void* target, std::string&& text);

/// How an object is read, or each of the objects in a list.
struct ObjectType {
  /// Binds the members of the object. `target` is what the object, or the list, is read into.
  void (*begin)(void* target, BoundObject& object);
  /// Takes the object when all members have been read; may be null. Returns null, or what is wrong.
  const char* (*end)(void* target, BoundObject& object);
};

/// The most integers that a row has.
inline constexpr std::size_t kMaxColumns = 6;
/// A number for each column.
using Row = std::array<std::uint32_t, kMaxColumns>;

/// How a row of integers is read, or rows: columns from 0 to a maximum each.
struct RowType {
  std::size_t columns;  ///< at most kMaxColumns
  Row maxima;           ///< of the columns
  /// Takes `count` rows of `columns` values each, one row after the other.
  void (*take)(void* target, const std::uint32_t* values, std::size_t count);
};

/// A key and what its value is read into.
struct BoundMember {
  std::string_view key;                ///< must outlive the reading
  ValueKind kind;                      ///< what the value may be
  void* target;                        ///< what the value is read into
  StoreText store = nullptr;           ///< of kString and kText
  const ObjectType* object = nullptr;  ///< of kObject and kList
  const RowType* rows = nullptr;       ///< of kRow and kRows
};

/// The members of an object, all of which must be present once, in any order.
class BoundObject {
 public:
  /// The most members that an object has.
  static constexpr std::size_t kMaxMembers = 16;

  /// The element of the list that the object is read into, until the list takes it.
  std::shared_ptr<void> element;

  /// Removes all members, and lets go of the element.
  void Clear() {
    size_ = 0;
    element.reset();
  }
  /// Adds a member. Throws std::out_of_range where there are kMaxMembers.
  void Add(const BoundMember& member) { members_.at(size_++) = member; }

  /// The members, in the order in which they were added.
  ///@{
  std::size_t size() const { return size_; }
  const BoundMember& operator[](std::size_t index) const { return members_[index]; }
  ///@}

 private:
  std::array<BoundMember, kMaxMembers> members_;  // only the first size_ are initialised
  std::size_t size_ = 0;
};

/// Reads the JSON object that `prefix` (what was read before) and the rest of the stream are. Throws
/// cmn::DataError with the path, as in songs[3].voices[0].messages[17], and the offset in bytes.
ZUNA_API void ReadObject(std::istream& is, std::string_view prefix, const ObjectType& root, void* target);

}  // namespace zuna_json
