// What a code of the toolkit means.
#pragma once

#include <string_view>

namespace zuna_toolkit {

/// What a stable code means for a musician, and what to do about it. The texts have no period at the end.
struct Explanation {
  std::string_view code;     ///< such as "tempo-zero"
  std::string_view meaning;  ///< what is the case
  std::string_view remedy;   ///< what to do
};

}  // namespace zuna_toolkit
