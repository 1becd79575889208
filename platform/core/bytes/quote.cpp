// Text from a file as it appears in messages.

#include "platform/core/bytes/quote.h"

#include "kit/format.h"
#include "kit/utf8.h"

namespace zuna_core {

std::string Quote(std::string_view text) {
  constexpr std::size_t kLongest = 40;
  const std::string_view shown = kit::CutUtf8(text, kLongest);
  const bool utf8 = kit::IsUtf8(shown);
  std::string quoted = "\"";
  for (const char c : shown) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') quoted += '\\';
    if (byte < 0x20 || byte == 0x7F || (byte >= 0x80 && !utf8)) {
      quoted += kit::format("\\x%02X", byte);
    } else {
      quoted += c;
    }
  }
  return quoted + (shown.size() < text.size() ? "\"…" : "\"");
}

}  // namespace zuna_core
