// The losses of a conversion, as lines of text.
#pragma once

#include <string>
#include <vector>

#include "toolkit/document/document.h"

namespace zuna_cli {

/// What `current` loses in `legacy`, which came down from it: a line for each kind of loss, with the first
/// one. Throws zuna_toolkit::Error.
std::vector<std::string> DownLossLines(const zuna_toolkit::Document& current,
                                       const zuna_toolkit::Document& legacy);

/// What `legacy` loses in `current`, which came up from it: a line for every bar label that was cut and all
/// tracks of one id, and for each other kind of loss.
std::vector<std::string> UpLossLines(const zuna_toolkit::Document& legacy,
                                     const zuna_toolkit::Document& current);

}  // namespace zuna_cli
