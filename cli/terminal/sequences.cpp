// Characters without a width that belong to the character before them.
#include "cli/terminal/sequences.h"

#include <utf8proc.h>

#include <string_view>

namespace zuna_cli {

namespace {

constexpr char32_t kJoiner = 0x200D;
constexpr int kVirama = 9;  // the canonical combining class of all of them

const utf8proc_property_t& PropertyOf(char32_t character) {
  return *utf8proc_get_property(static_cast<utf8proc_int32_t>(character));
}

bool IsPictograph(char32_t character) {
  return PropertyOf(character).boundclass == UTF8PROC_BOUNDCLASS_EXTENDED_PICTOGRAPHIC;
}

bool IsLetterWithoutCase(char32_t character) {
  return PropertyOf(character).category == UTF8PROC_CATEGORY_LO;
}

/// Selectors of one of 16 forms; those for ideographs alone.
bool IsSelector(char32_t character) { return character >= 0xFE00 && character <= 0xFE0F; }
bool IsIdeographSelector(char32_t character) { return character >= 0xE0100 && character <= 0xE01EF; }

/// A skin colour or a selector, which may stand between a pictograph and a joiner.
bool ChangesPictograph(char32_t character) {
  return IsSelector(character) || (character >= 0x1F3FB && character <= 0x1F3FF);
}

bool HasForms(char32_t character) {
  if (character < 0x80)
    return character != 0 &&
           std::string_view("0123456789#*").find(static_cast<char>(character)) != std::string_view::npos;
  const auto category = PropertyOf(character).category;
  return IsPictograph(character) || category == UTF8PROC_CATEGORY_SO || category == UTF8PROC_CATEGORY_SM ||
         category == UTF8PROC_CATEGORY_LO;
}

}  // namespace

bool Sequences::Uses(char32_t character, char32_t next) {
  const char32_t before = before_;
  const bool was_after_pictograph = is_after_pictograph_;
  before_ = character;
  if (character < 0x80) {
    is_after_pictograph_ = false;
    return false;
  }
  is_after_pictograph_ = IsPictograph(character) || (was_after_pictograph && ChangesPictograph(character));
  if (IsSelector(character)) return HasForms(before);
  if (IsIdeographSelector(character)) return before >= 0x80 && IsLetterWithoutCase(before);
  if (character != kJoiner) return false;
  if (was_after_pictograph) return IsPictograph(next);
  return PropertyOf(before).combining_class == kVirama && IsLetterWithoutCase(next);
}

}  // namespace zuna_cli
