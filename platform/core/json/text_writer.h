#pragma once

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

  /// A string; {"bytes": "hex"} for what is not UTF-8.
  void Text(std::string_view text);

 private:
  void Escaped(std::string_view text);
  void Hex(std::string_view bytes);

  OutputWindow& window_;
};

}  // namespace zuna_core
