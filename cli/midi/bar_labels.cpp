#include "cli/midi/bar_labels.h"

#include <algorithm>
#include <string>

namespace zuna_cli::midi {

std::vector<TL::BarsBeats> MakeBarLabels(const std::vector<TL::Meter>& meters, std::uint16_t division,
                                         std::uint32_t song_length) {
  std::vector<TL::BarsBeats> labels;
  for (std::size_t i = 0; i < meters.size(); ++i) {
    const TL::Meter& meter = meters[i];
    const std::uint64_t end = i + 1 < meters.size() ? std::min(meters[i + 1].time, song_length) : song_length;
    const std::uint64_t whole_note = std::uint64_t{4} * division;
    for (std::uint64_t bar = 0;; ++bar) {
      const std::uint64_t time = meter.time + bar * whole_note * meter.numerator / meter.denominator;
      if (time >= end) break;
      if (labels.size() == kMaxBarLabels) return labels;
      TL::BarsBeats label;
      label.time = static_cast<std::uint32_t>(time);
      label.bar_number(std::to_string(labels.size() + 1));
      labels.push_back(label);
    }
  }
  return labels;
}

}  // namespace zuna_cli::midi
