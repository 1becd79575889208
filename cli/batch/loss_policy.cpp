// Which losses of a conversion may be.
#include "cli/batch/loss_policy.h"

#include <algorithm>
#include <vector>

#include "toolkit/comparison/loss_text.h"

namespace zuna_cli {

std::string PolicyText(const ConversionOptions& options) {
  std::string text = options.fail_on.empty() ? "" : " --fail-on " + options.fail_on;
  for (const std::string& code : options.accepted) text += " --accept " + code;
  return text;
}

std::vector<zuna_toolkit::LossKind> RefusedKinds(const std::vector<zuna_toolkit::LossKind>& kinds,
                                                 const ConversionOptions& options) {
  std::vector<zuna_toolkit::LossKind> refused;
  if (options.fail_on.empty()) return refused;
  for (const zuna_toolkit::LossKind& kind : kinds) {
    if (kind.is_harmless && options.fail_on != kFailOnAnyLoss) continue;
    const auto& accepted = options.accepted;
    if (std::find(accepted.begin(), accepted.end(), kind.code) != accepted.end()) continue;
    refused.push_back(kind);
  }
  return refused;
}

void RequireAccepted(const Losses& losses, const ConversionOptions& options, const std::string& name) {
  const std::vector<zuna_toolkit::LossKind> refused = RefusedKinds(losses.Kinds(), options);
  if (refused.empty()) return;
  std::string codes;
  for (const zuna_toolkit::LossKind& kind : refused) codes += (codes.empty() ? "" : ",") + kind.code;
  throw Failure(ErrorCode::kLossRefused, name, "would not be lossless: " + zuna_toolkit::KindsText(refused),
                "give --accept " + codes + " to let it go, or leave out --fail-on");
}

}  // namespace zuna_cli
