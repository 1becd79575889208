#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "cli/shows/loss_report.h"

namespace zuna_cli {

/// Collects losses by kind. The text of the first one is made only when it is needed.
class LossList {
 public:
  template <class MakeText>
  void Add(const std::string& one, const std::string& many, std::size_t count, MakeText&& text_of_first) {
    if (count == 0) return;
    const auto same = [&](const Loss& loss) { return loss.one == one; };
    const auto found = std::find_if(losses_.begin(), losses_.end(), same);
    if (found == losses_.end()) {
      losses_.push_back({one, many, count, text_of_first()});
    } else {
      found->count += count;
    }
  }

  std::vector<Loss> Take() { return std::move(losses_); }

 private:
  std::vector<Loss> losses_;
};

}  // namespace zuna_cli
