// Which bar holds a tick.
#include "toolkit/internal/bar_labels.h"

#include <algorithm>
#include <iterator>

namespace zuna_toolkit {

std::string BarLabels::At(std::uint32_t tick) const {
  if (!found_) Find();
  const auto later = [](std::uint32_t time, const Bar& bar) { return time < bar.time; };
  const auto next = std::upper_bound(bars_.begin(), bars_.end(), tick, later);
  return next == bars_.begin() ? std::string() : std::string(std::prev(next)->label);
}

void BarLabels::Find() const {
  if (current_ != nullptr) {
    bars_.reserve(current_->size());
    for (const TL::BarsBeats& label : *current_) bars_.push_back({label.time, label.bar_number()});
  }
  if (legacy_ != nullptr) {
    bars_.reserve(legacy_->size());
    for (const version0::RBarsBeats& label : *legacy_) bars_.push_back({label.time, label.label});
  }
  const auto earlier = [](const Bar& a, const Bar& b) { return a.time < b.time; };
  if (!std::is_sorted(bars_.begin(), bars_.end(), earlier)) {
    std::stable_sort(bars_.begin(), bars_.end(), earlier);
  }
  found_ = true;
}

}  // namespace zuna_toolkit
