// Which losses of a conversion may be.
#pragma once

#include <string>
#include <vector>

#include "cli/batch/conversions.h"
#include "cli/shared/losses.h"

namespace zuna_cli {

/// The options about losses, for the report.
std::string PolicyText(const ConversionOptions& options);

/// Those of the losses that may not be.
std::vector<zuna_toolkit::LossKind> RefusedKinds(const std::vector<zuna_toolkit::LossKind>& kinds,
                                                 const ConversionOptions& options);

/// Throws Failure (kLossRefused) about the input called `name` where one of its losses may not be.
void RequireAccepted(const Losses& losses, const ConversionOptions& options, const std::string& name);

}  // namespace zuna_cli
