// How much all inputs of a command lose.
#include "cli/batch/loss_totals.h"

#include <algorithm>

#include "cli/terminal/standard_streams.h"
#include "toolkit/words.h"

namespace zuna_cli {

void LossTotals::Add(const std::vector<zuna_toolkit::LossKind>& losses) {
  for (const zuna_toolkit::LossKind& kind : losses) {
    const auto same = [&](const Total& total) {
      return total.kind.code == kind.code && total.kind.is_harmless == kind.is_harmless;
    };
    const auto found = std::find_if(totals_.begin(), totals_.end(), same);
    if (found == totals_.end()) {
      totals_.push_back({kind, 1});
    } else {
      found->kind.count += kind.count;
      ++found->files;
    }
  }
}

std::vector<std::string> LossTotals::Lines() const {
  std::vector<std::string> lines;
  for (const bool is_harmless : {false, true}) {
    for (const Total& total : totals_) {
      if (total.kind.is_harmless != is_harmless) continue;
      lines.push_back(
          NoteLine(zuna_toolkit::Counted(total.files, "file", "files"), zuna_toolkit::TotalLine(total.kind)));
    }
  }
  return lines;
}

}  // namespace zuna_cli
