// How a page looks and what its script does.
#pragma once

#include <string_view>

namespace zuna_toolkit {

/// CSS of the pictures, in a page and alone, light and dark.
extern const std::string_view kPictureStyle;

/// CSS of the page around them, for screens, light and dark, and for paper.
extern const std::string_view kPageStyle;

/// JavaScript for the choice of a song and for zoom. A page can be read without it.
extern const std::string_view kPageScript;

}  // namespace zuna_toolkit
