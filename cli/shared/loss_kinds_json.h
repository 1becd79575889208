// Kinds of losses as JSON.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cli/shared/loss_text.h"

namespace zuna_cli {

/// Objects, separated by commas: {"code": "fermata-dropped", "count": 3, "harmless": false}
std::string LossKindsJson(const std::vector<LossKind>& kinds);

/// What LossKindsJson() wrote and a bracket ends. `is_up` says which way they are lost on. A code that this
/// version does not know is passed over.
std::vector<LossKind> LossKindsOfJson(std::string_view json, bool is_up);

}  // namespace zuna_cli
