// Numbers and texts of records as bytes that may be damaged.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zuna_toolkit {

/// Reads numbers and texts, and never beyond the end: after that, ok() is false and everything is 0 or empty.
class RecordCursor {
 public:
  RecordCursor(std::string_view bytes, std::size_t at) : bytes_(bytes), at_(at), ok_(at <= bytes.size()) {}

  bool ok() const { return ok_; }
  std::size_t at() const { return at_; }

  /// The next `size` bytes.
  std::string_view Take(std::size_t size);
  /// A number of so many bytes, lowest first.
  std::uint32_t Number(std::size_t size);
  /// A text with its length before it.
  std::string_view Text();
  /// What was taken since `begin`.
  std::string_view From(std::size_t begin) const { return bytes_.substr(begin, at_ - begin); }

 private:
  std::string_view bytes_;
  std::size_t at_;
  bool ok_;
};

/// The four bytes of a number, lowest first.
std::string WordBytes(std::size_t number);

/// A text with its length before it. It has at most 255 bytes.
std::string TextBytes(std::string_view text);

/// Whether the magic of a legacy timeline is at `at`.
bool HasTimelineAt(std::string_view bytes, std::size_t at);

/// The text at `at` in `bytes`, a file of a current version: its length has four bytes or, in the compact
/// layout, seven bits a byte. None where it is longer than `longest`, or not typed. `at` is after it then.
std::optional<std::string_view> TypedText(std::string_view bytes, std::size_t& at, bool compact,
                                          std::size_t longest);

}  // namespace zuna_toolkit
