// Which bar holds a tick.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "TL/timeline.h"
#include "format_converter/version0/containers/timeline.h"

namespace zuna_toolkit {

/// The bar labels of a timeline, which has to outlive them. The first call of At() takes linear time, or
/// O(n log n) where they are in disorder, and memory for the place of each; a later one takes O(log n).
class BarLabels {
 public:
  /// Of a song without a timeline.
  BarLabels() = default;
  explicit BarLabels(const TL::Timeline& timeline) : current_(&timeline.bars_beats) {}
  explicit BarLabels(const version0::Timeline& timeline) : legacy_(&timeline.bars_beats) {}

  /// The last label at or before `tick`; empty where there is none.
  std::string At(std::uint32_t tick) const;

 private:
  /// A label of the timeline.
  struct Bar {
    std::uint32_t time = 0;  ///< ticks
    std::string_view label;
  };

  void Find() const;

  const std::vector<TL::BarsBeats>* current_ = nullptr;
  const std::vector<version0::RBarsBeats>* legacy_ = nullptr;
  mutable std::vector<Bar> bars_;  ///< in the order of time, once one was asked for
  mutable bool found_ = false;     ///< whether `bars_` is complete
};

}  // namespace zuna_toolkit
