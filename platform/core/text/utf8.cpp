#include "platform/core/text/utf8.h"

namespace zuna_core {

namespace {

bool IsContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

/// The number of bytes of the well-formed sequence at the front of `text`, or 0 where there is none.
/// The ranges are those of the table of well-formed byte sequences in RFC 3629, section 4.
std::size_t SequenceLength(std::string_view text) {
  const auto at = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = at(0);
  if (lead < 0x80) return 1;
  if (lead < 0xC2 || lead > 0xF4) return 0;
  const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (text.size() < length) return 0;
  const unsigned char low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  const unsigned char high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  if (at(1) < low || at(1) > high) return 0;
  for (std::size_t i = 2; i < length; ++i) {
    if (!IsContinuation(at(i))) return 0;
  }
  return length;
}

}  // namespace

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = SequenceLength(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

std::string_view CutText(std::string_view text, std::size_t limit) {
  if (text.size() <= limit) return text;
  if (!IsUtf8(text)) return text.substr(0, limit);
  while (limit > 0 && IsContinuation(static_cast<unsigned char>(text[limit]))) --limit;
  return text.substr(0, limit);
}

}  // namespace zuna_core
