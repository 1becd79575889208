#pragma once

// The fields of a file with the bytes that they take. Not part of the contract with the converter: a product
// that replaces platform/ for the converter alone need not supply it.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace cmn {

/// A value as it stands in a text form.
struct JsonText {
  std::string_view text;  ///< JSON
};

/// The value of a field: none for bytes without one, an unsigned or signed integer, a float, a text.
using FieldValue =
    std::variant<std::monostate, std::uint32_t, std::int32_t, float, std::string_view, JsonText>;

/// A field and its bytes. Valid during the call that hands it out.
struct PlacedField {
  std::uint64_t begin = 0;  ///< the first byte, counted from the beginning of the plaintext
  std::uint64_t end = 0;    ///< the byte after the last one
  std::string_view record;  ///< path of the record, such as songs[3].timeline.keys[2]; empty for the file
  std::string_view key;     ///< its name in the record
  FieldValue value;         ///< what the bytes mean
};

/// Takes the fields of a file one by one, in its order.
using TakeField = std::function<void(const PlacedField&)>;

/// Places fields one behind the other, and knows the path of the record that they are in.
class FieldPlacer {
 public:
  /// Hands out the fields by `take`, which must outlive this.
  explicit FieldPlacer(const TakeField& take) : take_(take) {}

  /// Where the last field ends.
  std::uint64_t end() const { return end_; }

  /// Begin a record: a member of the current one, or an entry of its list `key`. With an empty `key` it is
  /// the current one, or an entry of it.
  ///@{
  void Enter(std::string_view key) {
    sizes_.push_back(record_.size());
    if (!key.empty() && !record_.empty()) record_ += '.';
    record_ += key;
  }
  void Enter(std::string_view key, std::size_t index) {
    Enter(key);
    record_ += '[' + std::to_string(index) + ']';
  }
  ///@}

  /// Ends the record that was begun last.
  void Leave() {
    record_.resize(sizes_.back());
    sizes_.pop_back();
  }

  /// Hands out the field that ends at `end`, or has `size` bytes.
  ///@{
  void PlaceUpTo(std::uint64_t end, std::string_view key, const FieldValue& value = {}) {
    take_({end_, end, record_, key, value});
    end_ = end;
  }
  void Place(std::uint64_t size, std::string_view key, const FieldValue& value = {}) {
    PlaceUpTo(end_ + size, key, value);
  }
  ///@}

 private:
  const TakeField& take_;
  std::uint64_t end_ = 0;
  std::string record_;
  std::vector<std::size_t> sizes_;  ///< of the paths of the records around the current one
};

}  // namespace cmn
