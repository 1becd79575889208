#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "cli/base/errors.h"

namespace zuna_cli {

/// One kind of thing that a conversion changes or drops.
struct Loss {
  std::string one;        ///< what it is called: "voice number"
  std::string many;       ///< and when there are more of it: "voice numbers"
  std::size_t count = 0;  ///< how many
  std::string first;      ///< the first of them: "song 1: voice 12 becomes voice 2"

  bool operator==(const Loss&) const = default;
};

/// "3 voice numbers (song 1: voice 12 becomes voice 2)"
inline std::string LossText(const Loss& loss) {
  return Counted(loss.count, loss.one, loss.many) + " (" + loss.first + ")";
}

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
