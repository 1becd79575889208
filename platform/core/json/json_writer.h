#pragma once

// Writing JSON text, indented by two blanks a level.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "platform/core/bytes/buffered_output.h"
#include "platform/core/json/numbers.h"

namespace zuna_core {

/// Writes JSON into a buffered output: commas, line breaks and blanks are added.
class JsonWriter {
 public:
  /// How the members of an object are laid out.
  enum class Style { kLines, kOneLine };

  explicit JsonWriter(BufferedOutput& output) : output_(output) {}

  void OpenObject(Style style);
  /// Begins a member of the object; its value follows. `key` has at most kMaxKeySize bytes, none of which
  /// needs to be escaped.
  void Key(std::string_view key);
  void CloseObject();

  void OpenList();
  /// Begins an element of the list, on a line of its own; its value follows.
  void Element();
  void CloseList();

  void Number(std::uint32_t value) { output_.Commit(PutDecimal(output_.Room(kMaxDecimalSize), value)); }
  void Number(std::int32_t value) { output_.Commit(PutDecimal(output_.Room(kMaxSignedDecimalSize), value)); }

  /// A decimal number; {"bits": 2143289344} for what is not finite.
  void Float(float value);

  /// A string; {"bytes": "hex"} for what is not UTF-8.
  void Text(std::string_view text);

  /// These characters as they are.
  void Raw(std::string_view text) { output_.Write(text); }

  /// Begins a line at the level of the members of the current object or list.
  void NewLine();

  /// For a loop that writes values of its own.
  BufferedOutput& output() { return output_; }

  static constexpr std::size_t kMaxKeySize = 40;

 private:
  static constexpr std::size_t kMaxIndent = 16;

  void Escaped(std::string_view text);
  void Hex(std::string_view bytes);

  BufferedOutput& output_;
  std::size_t indent_ = 0;
  bool one_line_ = false;
  bool empty_ = true;  ///< whether the current object or list has nothing in it yet
};

inline void JsonWriter::Key(std::string_view key) {
  char* to = output_.Room(2 + kMaxIndent + 1 + kMaxKeySize + 3);
  if (!empty_) *to++ = ',';
  if (!one_line_) *to++ = '\n';
  const std::size_t blanks = one_line_ ? std::size_t{!empty_} : indent_;
  std::memset(to, ' ', blanks);
  to += blanks;
  *to++ = '"';
  to += key.copy(to, kMaxKeySize);
  *to++ = '"';
  *to++ = ':';
  *to++ = ' ';
  output_.Commit(to);
  empty_ = false;
}

}  // namespace zuna_core
