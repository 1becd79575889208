// Characters without a width that belong to the character before them.
#pragma once

namespace zuna_cli {

/// Follows a text character by character and knows where a zero-width joiner or a variation selector has a
/// use: a joiner between two pictographs or after a virama, a selector after a symbol, an ideograph, or a
/// digit of a keycap. Elsewhere they only hide in the text.
class Sequences {
 public:
  /// Whether `character` is one of these and has a use here. `next` follows it; 0 for none.
  bool Uses(char32_t character, char32_t next);

 private:
  char32_t before_ = 0;               ///< 0 at the beginning of the text
  bool is_after_pictograph_ = false;  ///< or after what changes its look
};

}  // namespace zuna_cli
