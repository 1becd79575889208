// What a timeline needs to be converted: a tempo under its first meter (docs/conversion.md).
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace zuna_toolkit {

/// Whether the first of the meters, of which there is one, has no tempo from its time on, before the second
/// one. Times wrap, as in the conversion: a second meter at time 0 leaves the range open.
template <typename Tempo, typename Meter>
bool LacksFirstTempo(const std::vector<Tempo>& tempos, const std::vector<Meter>& meters) {
  const std::uint32_t first = meters.front().time;
  const std::uint32_t last = meters.size() > 1 ? meters[1].time - 1 : 0xFFFFFFFF;
  const auto under_first = [&](const Tempo& tempo) { return tempo.time >= first && tempo.time <= last; };
  return std::none_of(tempos.begin(), tempos.end(), under_first);
}

}  // namespace zuna_toolkit
