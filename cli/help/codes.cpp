// The codes that the tool prints, and what they mean.
#include "cli/help/codes.h"

#include "toolkit/checking/finding.h"
#include "toolkit/comparison/comparison.h"
#include "toolkit/error_code.h"

namespace zuna_cli {

std::vector<CodeGroup> CodeGroups() {
  return {{"error", "Errors", zuna_toolkit::ErrorExplanations()},
          {"finding", "Findings", zuna_toolkit::FindingExplanations()},
          {"loss", "Losses", zuna_toolkit::LossExplanations()}};
}

std::vector<std::string> AllCodes() {
  std::vector<std::string> codes;
  for (const CodeGroup& group : CodeGroups()) {
    for (const zuna_toolkit::Explanation& explanation : group.codes) codes.emplace_back(explanation.code);
  }
  return codes;
}

}  // namespace zuna_cli
