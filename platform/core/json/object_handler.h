#pragma once

// The events of the JSON parser, held against the members that an object is bound to.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/core/json/ignore_events.h"
#include "platform/core/json/value_kinds.h"
#include "zuna_json/object.h"

namespace zuna_json {

/// Takes the events of Boost.JSON's basic_parser and stores the values where they are bound to. At the first
/// value that does not fit it stops the parser; problem() and Path() tell what is wrong and where.
///
/// A frame is pushed for each value that has begun and not ended. For {"songs": [{"division": 480}]}:
///   on_object_begin   BeginObject(): the root's type binds "songs"    frames: object
///   on_key            FindMember("songs")
///   on_array_begin    "songs" is a kList                              frames: object, list
///   on_object_begin   BeginObject(): the type of "songs" binds        frames: object, list, object
///                     "division" to a new song
///   on_key            FindMember("division")
///   on_int64          Integer(): stores 480 in the song
///   on_object_end     every bound member was seen; end() adds         frames: object, list
///                     the song to the show
///   on_array_end                                                      frames: object
///   on_object_end                                                     frames: none
class ObjectHandler : public IgnoreEvents {
 public:
  ObjectHandler(const ObjectType& root, void* target) : root_(root), root_target_(target) {}

  const std::string& problem() const { return problem_; }

  /// Where the parser is: songs[3].voices[0].messages[17]. Defined, like Expected(), with the other texts of
  /// messages in json_error.cpp.
  std::string Path() const;

  bool on_object_begin(Code& code);
  bool on_object_end(std::size_t, Code& code);
  bool on_array_begin(Code& code);
  bool on_array_end(std::size_t, Code& code);
  bool on_key_part(Part part, std::size_t, Code&) { return Append(part); }
  bool on_key(Part part, std::size_t, Code& code);
  bool on_string_part(Part part, std::size_t, Code&) { return Append(part); }
  bool on_string(Part part, std::size_t, Code& code);
  bool on_number_part(Part part, Code&) { return Expecting(ValueKind::kFloat) == nullptr || Append(part); }
  bool on_int64(std::int64_t value, Part part, Code& code) {
    // The integers of rows are nearly all that a file has.
    if (column_ >= columns_ || value < 0 || value > maxima_[column_]) return Integer(value, part, code);
    row_[column_++] = static_cast<std::uint32_t>(value);
    return true;
  }
  bool on_uint64(std::uint64_t, Part part, Code& code) { return Float(part, code); }  // above 2^63
  bool on_double(double, Part part, Code& code) { return Float(part, code); }
  bool on_bool(bool, Code& code) { return Unexpected(code); }
  bool on_null(Code& code) { return Unexpected(code); }

 private:
  /// kRow is a row, or a list of rows inside one of them: a row in a list is short and frequent, and has no
  /// frame of its own. kBits and kBytes are the objects that state the bits of a float or the bytes
  /// of a text.
  enum class Level : std::uint8_t { kObject, kList, kRows, kRow, kBits, kBytes };

  struct Frame {
    Level level = Level::kObject;
    const BoundMember* owner = nullptr;   ///< the member that this is the value of; null for a list's element
    const ObjectType* type = nullptr;     ///< of an object
    void* target = nullptr;               ///< of an object
    const BoundMember* member = nullptr;  ///< of an object: the one whose value is read
    std::size_t next = 0;                 ///< of an object: the member after the last one
    std::uint32_t seen = 0;               ///< of an object: a bit for each member
    bool key_seen = false;                ///< of kBits and kBytes: whether their only key was there
    std::size_t index = 0;                ///< of a list: the element
    BoundObject object;
  };

  // The bound members limit the depth, so that frames need no memory of their own.
  static constexpr std::size_t kMaxFrames = 12;

  Frame& top() { return frames_[depth_ - 1]; }
  const Frame& top() const { return frames_[depth_ - 1]; }
  Frame& Push(Level level, const BoundMember* owner);
  void Pop() { frames_[--depth_].object.Clear(); }

  /// Whether the value that is read is directly in a frame of this level.
  bool Inside(Level level) const { return depth_ != 0 && top().level == level; }

  /// The member whose value is read, if it is of this kind.
  const BoundMember* Expecting(ValueKind kind) const {
    return Inside(Level::kObject) && top().member->kind == kind ? top().member : nullptr;
  }

  bool Append(Part part) {
    text_.append(part.data(), part.size());
    return true;
  }

  bool BeginObject(const ObjectType& type, void* target, const BoundMember* owner);
  bool BeginRow(const RowType& type);
  static std::vector<std::string> UnseenKeys(const Frame& frame);
  static std::string HintAtKeys(std::string_view unknown, const Frame& frame);
  bool FindMember(std::string_view key, Code& code);
  bool OnlyKey(std::string_view known, std::string_view key, Code& code);
  bool EndBits(Code& code);
  bool EndBytes(Code& code);
  bool Text(Code& code);
  bool Integer(std::int64_t value, Part part, Code& code);
  bool Float(Part part, Code& code);
  bool Fail(Code& code, std::string problem);
  bool Unexpected(Code& code) { return Fail(code, "expected " + Expected()); }
  std::string Expected() const;

  const ObjectType& root_;
  void* root_target_;
  std::array<Frame, kMaxFrames> frames_;
  std::size_t depth_ = 0;
  std::size_t columns_ = 0;          ///< of the row that is read; 0 outside of rows
  std::size_t column_ = 0;           ///< the one whose integer comes next
  Row maxima_{};                     ///< of the columns
  Row row_{};                        ///< as far as it has been read
  std::vector<std::uint32_t> rows_;  ///< the values of the list of rows that is read
  std::string text_;                 ///< of a key, a text or a number, as far as it has been read
  std::string bytes_;                ///< that {"bytes": ...} has stated
  std::uint32_t bits_ = 0;           ///< that {"bits": ...} has stated
  std::string problem_;
};

}  // namespace zuna_json
