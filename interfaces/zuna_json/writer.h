#pragma once

// Writing JSON text, indented by two blanks a level. Not part of the contract with the converter: a product
// that replaces platform/ for the converter alone need not supply it.

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <span>
#include <string_view>

#include "kit/api.h"

namespace zuna_core {
class BufferedOutput;
}

namespace zuna_json {

/// Writes JSON to a stream: commas, line breaks and blanks are added. Throws kit::IoError when the stream
/// does not take it, or std::ios_base::failure where the stream's mask asks for that.
class ZUNA_API Writer {
 public:
  /// How the members of an object are laid out.
  enum class Style { kLines, kOneLine };

  /// Writes to `os`, which must outlive this.
  explicit Writer(std::ostream& os);
  ~Writer();
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;

  /// Writes what has not reached the stream yet. To be called at the end.
  void Flush();

  /// Begin and end an object.
  ///@{
  void OpenObject(Style style);
  void CloseObject();
  ///@}

  /// Begins a member of the object; its value follows. `key` has at most kMaxKeySize bytes, none of which
  /// needs to be escaped.
  void Key(std::string_view key);

  /// Begin and end a list.
  ///@{
  void OpenList();
  void CloseList();
  ///@}

  /// Begins an element of the list, on a line of its own; its value follows.
  void Element();

  /// A decimal integer.
  ///@{
  void Number(std::uint32_t value);
  void Number(std::int32_t value);
  ///@}

  /// A decimal number; {"bits": 2143289344} for what is not finite.
  void Float(float value);

  /// A string; {"bytes": "hex"} for what is not UTF-8.
  void Text(std::string_view text);

  /// These characters as they are.
  void Raw(std::string_view text);

  /// A list of numbers as an element of a list, on a line of its own that is not indented.
  void Row(std::span<const std::uint32_t> values);

  /// Begins a line at the level of the members of the current object or list.
  void NewLine();

  /// For the loops of the core library that write values of their own.
  zuna_core::BufferedOutput& output() { return *output_; }

  /// The longest key, in bytes.
  static constexpr std::size_t kMaxKeySize = 40;

 private:
  static constexpr std::size_t kMaxIndent = 16;

  std::unique_ptr<zuna_core::BufferedOutput> output_;
  std::size_t indent_ = 0;
  bool one_line_ = false;
  bool empty_ = true;  ///< whether the current object or list has nothing in it yet
};

}  // namespace zuna_json
