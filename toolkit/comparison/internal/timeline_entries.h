// How the entries of current and legacy timelines are compared and described.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "TL/timeline.h"
#include "format_converter/version0/containers/timeline.h"
#include "kit/format.h"
#include "toolkit/comparison/internal/list_comparison.h"
#include "toolkit/comparison/internal/song_differences.h"

namespace zuna_toolkit {

/// A label, with its tag where it has one.
inline std::string LabelText(const std::string& label, unsigned tag) {
  std::string text = '"' + label + '"';
  if (tag != 0) text += " with tag " + std::to_string(tag);
  return text;
}

/// What the entries of all timelines have in common.
template <typename Entry>
struct TimedTraits {
  static std::uint32_t Tick(const Entry& entry) { return entry.time; }
};

template <>
struct EntryTraits<TL::Tempo> : TimedTraits<TL::Tempo> {
  static auto Values(const TL::Tempo& tempo) { return std::tuple(tempo.microseconds); }
  static std::string Text(const TL::Tempo& tempo) { return kit::format("%u us", tempo.microseconds); }
};

template <>
struct EntryTraits<TL::BarsBeats> : TimedTraits<TL::BarsBeats> {
  static auto Values(const TL::BarsBeats& label) {
    return std::tuple(std::string_view(label.bar_number()), label.tag);
  }
  static std::string Text(const TL::BarsBeats& label) { return LabelText(label.bar_number(), label.tag); }
};

template <>
struct EntryTraits<TL::Key> : TimedTraits<TL::Key> {
  static auto Values(const TL::Key& key) { return std::tuple(key.key, key.mode); }
  static std::string Text(const TL::Key& key) { return kit::format("key %d mode %u", key.key, key.mode); }
};

template <>
struct EntryTraits<TL::PageNumber> : TimedTraits<TL::PageNumber> {
  static auto Values(const TL::PageNumber& page) { return std::tuple(page.page); }
  static std::string Text(const TL::PageNumber& page) { return kit::format("page %u", page.page); }
};

template <>
struct EntryTraits<TL::Meter> : TimedTraits<TL::Meter> {
  static auto Values(const TL::Meter& meter) {
    return std::tuple(meter.numerator, meter.denominator, meter.clocks_per_click,
                      meter.notated_32_per_quarter);
  }
  static std::string Text(const TL::Meter& meter) {
    return kit::format("%u/%u with %u clocks and %u 32nds", meter.numerator, meter.denominator,
                       meter.clocks_per_click, meter.notated_32_per_quarter);
  }
};

template <>
struct EntryTraits<version0::RTempo> : TimedTraits<version0::RTempo> {
  static auto Values(const version0::RTempo& tempo) {
    return std::tuple(std::bit_cast<std::uint32_t>(tempo.seconds_per_tick), tempo.bpm,
                      tempo.notated_32_per_click, tempo.notated_32_per_quarter);
  }
  static std::string Text(const version0::RTempo& tempo) {
    return kit::format("%.9g s a tick and %u bpm with a click of %u of %u 32nds",
                       static_cast<double>(tempo.seconds_per_tick), tempo.bpm, tempo.notated_32_per_click,
                       tempo.notated_32_per_quarter);
  }
};

template <>
struct EntryTraits<version0::RBarsBeats> : TimedTraits<version0::RBarsBeats> {
  static auto Values(const version0::RBarsBeats& label) {
    return std::tuple(std::string_view(label.label), label.tag);
  }
  static std::string Text(const version0::RBarsBeats& label) { return LabelText(label.label, label.tag); }
};

template <>
struct EntryTraits<version0::RKey> : TimedTraits<version0::RKey> {
  static auto Values(const version0::RKey& key) { return std::tuple(key.key, key.mode); }
  static std::string Text(const version0::RKey& key) {
    return kit::format("key %d mode %u", key.key, key.mode);
  }
};

template <>
struct EntryTraits<version0::RPageNum> : TimedTraits<version0::RPageNum> {
  static auto Values(const version0::RPageNum& page) { return std::tuple(page.page); }
  static std::string Text(const version0::RPageNum& page) { return kit::format("page %u", page.page); }
};

template <>
struct EntryTraits<version0::RMeter> : TimedTraits<version0::RMeter> {
  static auto Values(const version0::RMeter& meter) { return std::tuple(meter.numerator, meter.denominator); }
  static std::string Text(const version0::RMeter& meter) {
    return kit::format("%u/%u", meter.numerator, meter.denominator);
  }
};

/// One of the lists of a timeline.
struct TimelineList {
  Subject subject;
  std::string_view name;  ///< as the text form calls it
};

inline constexpr TimelineList kTempoList{Subject::kTempo, "tempos"};
inline constexpr TimelineList kBarLabelList{Subject::kBarLabel, "barsBeats"};
inline constexpr TimelineList kKeyList{Subject::kKey, "keys"};
inline constexpr TimelineList kPageNumberList{Subject::kPageNumber, "pageNumbers"};
inline constexpr TimelineList kMeterList{Subject::kMeter, "meters"};

/// Adds the differences between two lists of a timeline.
template <typename Entry>
void CompareTimelineLists(const TimelineList& list, const std::vector<Entry>& before,
                          const std::vector<Entry>& after, const SongDifferences& differences) {
  using Traits = EntryTraits<Entry>;
  const auto equal = [](const Entry& a, const Entry& b) {
    return Traits::Tick(a) == Traits::Tick(b) && Traits::Values(a) == Traits::Values(b);
  };
  if (std::equal(before.begin(), before.end(), after.begin(), after.end(), equal)) return;
  const ListComparison<Entry> comparison(before, after);
  for (const EntryPair<Entry>& pair : comparison.pairs())
    differences.Add(EntryDifference(list.subject, list.name, pair));
  if (!comparison.reordered()) return;
  Difference difference;
  difference.subject = list.subject;
  difference.action = Action::kReordered;
  difference.place.list = list.name;
  differences.Add(difference);
}

}  // namespace zuna_toolkit
