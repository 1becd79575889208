#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/core/stream/output_window.h"

namespace zuna_core {

/// Writes the pieces of a JSON text into an output window.
class JsonTextWriter {
 public:
  explicit JsonTextWriter(OutputWindow& window) : window_(window) {}

  /// Punctuation, keys and blanks, as they are.
  void Raw(std::string_view text) { window_.Write(text); }

  void Number(std::int64_t value);

  /// A decimal number; {"bits": 2143289344} for what is not finite.
  void Float(float value);

  /// `opening`, then each entry on a line of its own behind `indent` blanks, as write(entry) writes it, then
  /// the end of the list.
  template <class Entries, class WriteEntry>
  void List(std::string_view opening, std::size_t indent, const Entries& entries, const WriteEntry& write) {
    Raw(opening);
    bool first = true;
    for (const auto& entry : entries) {
      Raw(first ? "" : ",");
      NewLine(indent);
      write(entry);
      first = false;
    }
    if (!first) NewLine(indent - 2);
    Raw("]");
  }

  /// A string; {"bytes": "hex"} for what is not UTF-8.
  void Text(std::string_view text);

 private:
  void NewLine(std::size_t indent);
  void Escaped(std::string_view text);
  void Hex(std::string_view bytes);

  OutputWindow& window_;
};

}  // namespace zuna_core
