// The fields of a text form with the bytes that they take (docs/format-2.md). The reader of text forms has
// accepted the text: only the places of its values are looked for here.
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "toolkit/document/internal/field_lists.h"

namespace zuna_toolkit {

namespace {

/// The columns of a message.
constexpr std::array<std::string_view, 4> kMessageColumns{"time", "status", "data1", "data2"};

/// Goes over the values of a JSON text.
class ValueWalk {
 public:
  ValueWalk(std::string_view text, cmn::FieldPlacer& placer) : text_(text), placer_(placer) {}

  void Run() {
    if (Members()) placer_.PlaceUpTo(text_.size(), "end");
  }

 private:
  // Each returns false where the text ends first.

  /// Goes to the next character that is no white space, which is `next` then.
  bool Find(char& next) {
    at_ = text_.find_first_not_of(" \t\r\n", at_);
    if (at_ >= text_.size()) return false;
    next = text_[at_];
    return true;
  }

  /// The object that begins here: its members.
  bool Members() {
    char next = 0;
    for (++at_; Find(next); ++at_) {
      if (next == '}') return ++at_, true;
      if (next == ',') continue;
      const std::size_t key = at_;
      if (!PassString()) return false;
      const std::string_view name = text_.substr(key + 1, at_ - key - 2);
      if (!Find(next)) return false;
      ++at_;  // the colon
      if (!Find(next) || !Value(next, std::string(name))) return false;
      --at_;
    }
    return false;
  }

  /// The value that begins here with `first`.
  bool Value(char first, const std::string& key) {
    if (first == '[') return Elements(key);
    if (first != '{') return Scalar(key);
    placer_.Enter(key);
    if (!Members()) return false;
    placer_.Leave();
    return true;
  }

  /// The list that begins here: its elements.
  bool Elements(const std::string& key) {
    std::size_t count = 0;
    char next = 0;
    for (++at_; Find(next); ++at_) {
      if (next == ',') continue;
      if (next == ']') {
        ++at_;
        if (count == 0) placer_.PlaceUpTo(at_, key, cmn::JsonText{"[]"});
        return true;
      }
      if (!Element(next, key, count++)) return false;
      --at_;
    }
    return false;
  }

  bool Element(char first, const std::string& key, std::size_t index) {
    if (first != '[' && first != '{') return Scalar(key + '[' + std::to_string(index) + ']');
    placer_.Enter(key, index);
    if (!(first == '{' ? Members() : Row())) return false;
    placer_.Leave();
    return true;
  }

  /// The message that begins here.
  bool Row() {
    char next = 0;
    std::size_t column = 0;
    for (++at_; Find(next); ++at_) {
      if (next == ',') continue;
      if (next == ']') return ++at_, true;
      if (column == kMessageColumns.size() || !Scalar(std::string(kMessageColumns[column++]))) return false;
      --at_;
    }
    return false;
  }

  /// The string, number or word that begins here.
  bool Scalar(const std::string& key) {
    const std::size_t begin = at_;
    if (text_[at_] == '"') {
      if (!PassString()) return false;
    } else {
      at_ = text_.find_first_of(",]} \t\r\n", at_);
      if (at_ == std::string_view::npos) return false;
    }
    placer_.PlaceUpTo(at_, key, cmn::JsonText{text_.substr(begin, at_ - begin)});
    return true;
  }

  bool PassString() {
    for (++at_; at_ < text_.size(); ++at_) {
      if (text_[at_] == '\\') {
        ++at_;
      } else if (text_[at_] == '"') {
        return ++at_, true;
      }
    }
    return false;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  cmn::FieldPlacer& placer_;
};

}  // namespace

void ListTextFields(std::string_view text, const cmn::TakeField& take) {
  cmn::FieldPlacer placer(take);
  ValueWalk(text, placer).Run();
}

}  // namespace zuna_toolkit
