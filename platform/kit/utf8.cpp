// UTF-8: the table of well-formed byte sequences of RFC 3629, section 4; classes of characters.

#include "kit/utf8.h"

#include <algorithm>
#include <span>

namespace kit {

namespace {

/// Code points, both ends included.
struct Range {
  char32_t first;
  char32_t last;
};

constexpr Range kControls[] = {
    {0x00, 0x1F},      // C0
    {0x7F, 0x9F},      // DEL, C1
    {0x061C, 0x061C},  // Arabic letter mark
    {0x200E, 0x200F},  // left-to-right and right-to-left mark
    {0x2028, 0x2029},  // line and paragraph separator
    {0x202A, 0x202E},  // bidirectional embeddings and overrides
    {0x2066, 0x2069},  // bidirectional isolates
};

constexpr Range kInvisible[] = {
    {0x00AD, 0x00AD},    // soft hyphen
    {0x180E, 0x180E},    // Mongolian vowel separator
    {0x200B, 0x200D},    // zero-width space, non-joiner and joiner
    {0x2060, 0x2065},    // word joiner, invisible operators
    {0x206A, 0x206F},    // deprecated format characters
    {0xFEFF, 0xFEFF},    // byte-order mark
    {0xFFF9, 0xFFFB},    // interlinear annotation
    {0x1D173, 0x1D17A},  // beams, ties and slurs
    {0xE0000, 0xE0FFF},  // tags and what is reserved beside them
};

bool IsIn(std::span<const Range> ranges, char32_t character) {
  return std::any_of(ranges.begin(), ranges.end(), [character](const Range& range) {
    return range.first <= character && character <= range.last;
  });
}

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

char32_t CodePoint(std::string_view character) {
  const auto lead = static_cast<unsigned char>(character[0]);
  if (character.size() == 1) return lead;
  char32_t value = lead & (0x7Fu >> character.size());  // the lead byte has a mark for each byte, and a zero
  for (const char byte : character.substr(1)) value = value << 6 | (static_cast<unsigned char>(byte) & 0x3Fu);
  return value;
}

bool IsControl(char32_t character) { return IsIn(kControls, character); }

bool IsInvisible(char32_t character) { return IsIn(kInvisible, character); }

}  // namespace kit
