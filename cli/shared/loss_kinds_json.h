// Kinds of losses as JSON.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "toolkit/comparison/loss_text.h"

namespace zuna_cli {

/// Objects, separated by commas: {"code": "fermata-dropped", "count": 3, "harmless": false}
std::string LossKindsJson(const std::vector<zuna_toolkit::LossKind>& kinds);

/// The kinds in `json`, the text that LossKindsJson() wrote; reading stops at the first ']'. `is_up` says
/// whether the conversion was up. A code that this version does not know is passed over.
std::vector<zuna_toolkit::LossKind> LossKindsOfJson(std::string_view json, bool is_up);

}  // namespace zuna_cli
