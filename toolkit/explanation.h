// What a code of the toolkit means.
#pragma once

#include <string_view>

namespace zuna_toolkit {

/// What a stable code means for a musician, and what to do about it. The texts have no period at the end.
struct Explanation {
  std::string_view code;     ///< such as "tempo-zero"
  std::string_view meaning;  ///< what is the case
  std::string_view cause;    ///< how it comes about
  std::string_view remedy;   ///< what to do
  std::string_view
      commands;  ///< command lines for that, one a line; words in capitals stand for files and values
};

}  // namespace zuna_toolkit
