// Converts a legacy timeline to the current model and back: docs/conversion.md.

#include "format_converter/version0/conversions/timeline_conversion.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <stdexcept>

#include "TL/timeline.h"
#include "format_converter/version0/containers/timeline.h"
#include "format_converter/version0/primitives/internal/primitives.h"

namespace version0 {

namespace {

/// The index of the first tempo at `time` or later, from the index `begin` on. In a list that is not sorted,
/// the bisection ends at some index; there the standard algorithms are undefined.
template <typename Tempo>
std::size_t first_tempo_at(const std::vector<Tempo>& tempos, std::size_t begin, std::uint64_t time) {
  std::size_t count = tempos.size() - begin;
  while (count > 0) {
    const std::size_t half = count / 2;
    if (tempos[begin + half].time < time) {
      begin += half + 1;
      count -= half + 1;
    } else {
      count = half;
    }
  }
  return begin;
}

/// The tempos of meter `i`: from its time up to the time of the next meter. Tempos before the first meter
/// belong to none. Times wrap, so a next meter at time 0 leaves the range open.
template <typename Tempo, typename Meter>
std::span<const Tempo> tempos_under(const std::vector<Tempo>& tempos, const std::vector<Meter>& meters,
                                    std::size_t i) {
  const std::uint32_t last = i + 1 < meters.size() ? meters[i + 1].time - 1 : 0xFFFFFFFF;
  const std::size_t begin = first_tempo_at(tempos, 0, meters[i].time);
  const std::size_t end = first_tempo_at(tempos, begin, std::uint64_t{last} + 1);
  return std::span(tempos).subspan(begin, end - begin);
}

/// The first meter must have a tempo. Later meters without one use the last tempo before them.
template <typename Tempo, typename Meter>
void require_first_tempo(const std::vector<Tempo>& tempos, const std::vector<Meter>& meters) {
  if (meters.empty())
    throw std::logic_error("A timeline without meters cannot be converted: add a meter at its start");
  if (tempos_under(tempos, meters, 0).empty())
    throw std::logic_error("Expected RTempo event on first iteration!");
}

/// Refuses a timeline that would get too many tempos. A meter whose next meter is at time 0 has all tempos
/// from its own time on, so meters in disorder repeat tempos. They are converted without a correction, but a
/// file made of them must not exhaust the memory.
class TempoLimit {
 public:
  /// For a timeline with this number of entries in its five lists.
  explicit TempoLimit(std::size_t entries) : most_(std::max(kAlwaysTaken, 2 * entries)) {}

  /// Throws std::length_error when the converted timeline may not have `count` tempos.
  void require(std::size_t count) const {
    if (count <= most_) return;
    throw std::length_error("The meters of a timeline are in disorder and would repeat its tempos too often");
  }

 private:
  static constexpr std::size_t kAlwaysTaken = 4096;
  std::size_t most_;
};

std::size_t entry_count(const Timeline& timeline) {
  return timeline.tempos.size() + timeline.bars_beats.size() + timeline.keys.size() +
         timeline.page_nums.size() + timeline.meters.size();
}

std::size_t entry_count(const TL::Timeline& timeline) {
  return timeline.tempos.size() + timeline.bars_beats.size() + timeline.keys.size() +
         timeline.page_numbers.size() + timeline.meters.size();
}

TL::Meter make_meter(std::uint32_t time, const RMeter& signature, const RTempo& click) {
  return {time, signature.numerator, signature.denominator, click.clocks_per_click(),
          click.notated_32_per_quarter};
}

void convert_meters(const Timeline& from, TL::Timeline& to, unsigned short division) {
  require_first_tempo(from.tempos, from.meters);
  const TempoLimit limit(entry_count(from));
  const RTempo* last_tempo = nullptr;
  for (std::size_t i = 0; i < from.meters.size(); ++i) {
    const RMeter& signature = from.meters[i];
    const auto tempos = tempos_under(from.tempos, from.meters, i);
    if (tempos.empty()) {
      to.meters.push_back(make_meter(signature.time, signature, *last_tempo));
      continue;
    }
    limit.require(to.tempos.size() + tempos.size());
    to.meters.push_back(make_meter(tempos.front().time, signature, tempos.front()));
    for (const RTempo& tempo : tempos) {
      to.tempos.push_back({tempo.time, static_cast<std::uint32_t>(tempo.microseconds(division))});
      if (need_new_meter(to.meters.back(), tempo))
        to.meters.push_back(make_meter(tempo.time, signature, tempo));
    }
    last_tempo = &tempos.back();
  }
}

RTempo make_tempo(const TL::Tempo& tempo, const TL::Meter& click, unsigned short division) {
  return {tempo.time, static_cast<float>(tempo.tick_time(division)), click.notated_32_per_click(),
          click.notated_32_per_quarter,
          static_cast<std::uint16_t>(truncated(tempo.bpm(click.clocks_per_click)))};
}

/// The same tempo, repeated at a meter whose click differs.
RTempo repeat_tempo(const RTempo& tempo, const TL::Meter& click) {
  return {click.time, tempo.seconds_per_tick, click.notated_32_per_click(), click.notated_32_per_quarter,
          tempo.bpm};
}

void convert_meters(const TL::Timeline& from, Timeline& to, unsigned short division) {
  require_first_tempo(from.tempos, from.meters);
  const TempoLimit limit(entry_count(from));
  for (std::size_t i = 0; i < from.meters.size(); ++i) {
    const TL::Meter& meter = from.meters[i];
    to.meters.emplace_back(meter.time, meter.numerator, meter.denominator);
    const auto tempos = tempos_under(from.tempos, from.meters, i);
    limit.require(to.tempos.size() + tempos.size());
    for (const TL::Tempo& tempo : tempos) to.tempos.push_back(make_tempo(tempo, meter, division));
    if (tempos.empty() && need_new_tempo(to.tempos.back(), meter)) {
      limit.require(to.tempos.size() + 1);
      to.tempos.push_back(repeat_tempo(to.tempos.back(), meter));
    }
  }
}

}  // namespace

bool need_new_meter(const TL::Meter& meter, const RTempo& tempo) {
  return meter.clocks_per_click != tempo.clocks_per_click() ||
         meter.notated_32_per_quarter != tempo.notated_32_per_quarter;
}

bool need_new_tempo(const RTempo& tempo, const TL::Meter& meter) {
  return tempo.notated_32_per_click != meter.notated_32_per_click() ||
         tempo.notated_32_per_quarter != meter.notated_32_per_quarter;
}

std::shared_ptr<TL::Timeline> Timeline::get_version_1_0(unsigned short division) const {
  auto converted = std::make_shared<TL::Timeline>();
  convert_meters(*this, *converted, division);
  for (const RBarsBeats& record : bars_beats) {
    TL::BarsBeats entry;
    entry.time = record.time;
    entry.tag = record.tag;
    entry.bar_number(record.label);
    converted->bars_beats.push_back(entry);
  }
  for (const RKey& record : keys) converted->keys.push_back({record.time, record.key, record.mode});
  for (const RPageNum& record : page_nums) converted->page_numbers.push_back({record.time, record.page});
  return converted;
}

Timeline::Timeline(const TL::Timeline& timeline, const std::string& song_name, unsigned length,
                   unsigned short division)
    : name(song_name), song_length(length) {
  convert_meters(timeline, *this, division);
  for (const TL::BarsBeats& entry : timeline.bars_beats) {
    bars_beats.emplace_back(entry.time, entry.bar_number(), entry.tag);
  }
  for (const TL::Key& entry : timeline.keys) {
    keys.emplace_back(entry.time, static_cast<std::int8_t>(entry.key), static_cast<std::uint8_t>(entry.mode));
  }
  for (const TL::PageNumber& entry : timeline.page_numbers) {
    page_nums.emplace_back(entry.time, static_cast<std::uint16_t>(entry.page));
  }
}

}  // namespace version0
