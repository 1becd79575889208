// UTF-8: the table of well-formed byte sequences of RFC 3629, section 4.

#include "kit/utf8.h"

namespace kit {

namespace {

bool IsBetween(unsigned char byte, unsigned char low, unsigned char high) {
  return byte >= low && byte <= high;
}

bool IsContinuation(unsigned char byte) { return IsBetween(byte, 0x80, 0xBF); }

/// How long a sequence with this first byte is, or 0 where none begins with it.
std::size_t LengthFromLead(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (IsBetween(lead, 0xC2, 0xDF)) return 2;
  if (IsBetween(lead, 0xE0, 0xEF)) return 3;
  if (IsBetween(lead, 0xF0, 0xF4)) return 4;
  return 0;
}

/// Whether `second` may follow `lead`: no overlong forms, no surrogates, nothing above U+10FFFF.
bool IsSecondByte(unsigned char lead, unsigned char second) {
  switch (lead) {
    case 0xE0:
      return IsBetween(second, 0xA0, 0xBF);
    case 0xED:
      return IsBetween(second, 0x80, 0x9F);
    case 0xF0:
      return IsBetween(second, 0x90, 0xBF);
    case 0xF4:
      return IsBetween(second, 0x80, 0x8F);
    default:
      return IsContinuation(second);
  }
}

}  // namespace

std::size_t Utf8Length(std::string_view text) {
  if (text.empty()) return 0;
  const auto at = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const std::size_t length = LengthFromLead(at(0));
  if (length < 2) return length;
  if (text.size() < length || !IsSecondByte(at(0), at(1))) return 0;
  for (std::size_t i = 2; i < length; ++i) {
    if (!IsContinuation(at(i))) return 0;
  }
  return length;
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = Utf8Length(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

std::string_view CutUtf8(std::string_view text, std::size_t limit) {
  if (text.size() <= limit) return text;
  if (!IsUtf8(text)) return text.substr(0, limit);
  while (limit > 0 && IsContinuation(static_cast<unsigned char>(text[limit]))) --limit;
  return text.substr(0, limit);
}

}  // namespace kit
