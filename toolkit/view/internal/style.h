// How a page looks and what its script does.
#pragma once

#include <string_view>

namespace zuna_toolkit {

/// CSS for screens, light and dark, and for paper.
extern const std::string_view kPageStyle;

/// JavaScript for the choice of a song and for zoom. A page can be read without it.
extern const std::string_view kPageScript;

}  // namespace zuna_toolkit
