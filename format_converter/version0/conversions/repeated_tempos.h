#pragma once

// How many tempos the meters of a whole show may repeat: docs/conversion.md.

#include <algorithm>
#include <cstddef>
#include <stdexcept>

#include "TL/timeline.h"
#include "format_converter/version0/containers/timeline.h"

namespace version0 {

/// Refuses a show whose meters repeat too many tempos on the way down. The conversion of a timeline has a
/// limit of its own, which small timelines may reach; a show of nothing but such ones would come out much
/// larger.
class RepeatedTempos {
 public:
  /// Counts the next timeline of the show, and what became of it. Throws std::length_error.
  void Add(const TL::Timeline& from, const Timeline& to) {
    const std::size_t entries = from.tempos.size() + from.bars_beats.size() + from.keys.size() +
                                from.page_numbers.size() + from.meters.size();
    repeated_ += to.tempos.size() - std::min(to.tempos.size(), 2 * entries);
    if (repeated_ <= kMost) return;
    throw std::length_error("The meters of the show are in disorder and would repeat its tempos too often");
  }

 private:
  static constexpr std::size_t kMost = 4096;
  std::size_t repeated_ = 0;  ///< tempos beyond twice the entries of their timelines
};

}  // namespace version0
