// The codes that the tool prints, and what they mean.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/explanation.h"

namespace zuna_cli {

/// Codes of one kind.
struct CodeGroup {
  std::string_view kind;   ///< such as "error"
  std::string_view title;  ///< such as "Errors"
  std::span<const zuna_toolkit::Explanation> codes;
};

/// All kinds.
std::vector<CodeGroup> CodeGroups();

/// All codes of all kinds.
std::vector<std::string> AllCodes();

}  // namespace zuna_cli
