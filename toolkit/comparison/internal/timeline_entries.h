// How the entries of current and legacy timelines are compared and described.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
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
  /// What a conversion did to an entry that came back with other values at the same time. It keeps the order
  /// of the lists where it only cuts.
  static Action LossOf(const Entry& /*before*/, const Entry& /*after*/) { return Action::kCut; }
};

/// What a conversion did to a duration.
inline Action LossOfDuration(double before, double after) {
  constexpr double kRoundedBy = 1.0 / 128;
  if (after == 0 && before != 0) return Action::kDefaulted;
  return std::abs(before - after) <= std::abs(before) * kRoundedBy ? Action::kApproximated : Action::kChanged;
}

template <>
struct EntryTraits<TL::Tempo> : TimedTraits<TL::Tempo> {
  static auto Values(const TL::Tempo& tempo) { return std::tuple(tempo.microseconds); }
  static std::string Text(const TL::Tempo& tempo) {
    constexpr unsigned char kClocksPerQuarter = 24;
    if (tempo.microseconds == 0) return "0 us";
    return kit::format("%u us (%.6g bpm)", tempo.microseconds, tempo.bpm(kClocksPerQuarter));
  }
  static Action LossOf(const TL::Tempo& before, const TL::Tempo& after) {
    return LossOfDuration(before.microseconds, after.microseconds);
  }
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
  static Action LossOf(const TL::Meter& before, const TL::Meter& after) {
    const bool same_signature =
        before.numerator == after.numerator && before.denominator == after.denominator;
    return same_signature ? Action::kApproximated : Action::kChanged;  // the click was rounded
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
  static Action LossOf(const version0::RTempo& before, const version0::RTempo& after) {
    return LossOfDuration(static_cast<double>(before.seconds_per_tick),
                          static_cast<double>(after.seconds_per_tick));
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
  static Action LossOf(const version0::RMeter& /*before*/, const version0::RMeter& /*after*/) {
    return Action::kChanged;
  }
};

/// One of the lists of a timeline.
struct TimelineList {
  Subject subject;
  std::string_view name;  ///< as the text form calls it
  bool stays = true;      ///< a conversion keeps the number and the order of its entries
};

inline constexpr TimelineList kTempoList{Subject::kTempo, "tempos", false};
inline constexpr TimelineList kBarLabelList{Subject::kBarLabel, "barsBeats"};
inline constexpr TimelineList kKeyList{Subject::kKey, "keys"};
inline constexpr TimelineList kPageNumberList{Subject::kPageNumber, "pageNumbers"};
inline constexpr TimelineList kMeterList{Subject::kMeter, "meters", false};

/// The difference that a pair of entries of `list` makes.
template <typename Entry>
Difference TimelineDifference(const TimelineList& list, const EntryPair<Entry>& pair, bool is_loss) {
  using Traits = EntryTraits<Entry>;
  Difference difference = EntryDifference(list.subject, list.name, pair);
  const bool both = pair.before.entry != nullptr && pair.after.entry != nullptr;
  if (is_loss && both && difference.place.tick == difference.place.after_tick) {
    difference.action = Traits::LossOf(*pair.before.entry, *pair.after.entry);
  }
  return difference;
}

/// Adds the differences between two lists of a timeline.
template <typename Entry>
void CompareTimelineLists(const TimelineList& list, const std::vector<Entry>& before,
                          const std::vector<Entry>& after, const SongDifferences& differences) {
  using Traits = EntryTraits<Entry>;
  const bool are_losses = differences.are_losses();
  const auto equal = [](const Entry& a, const Entry& b) {
    return Traits::Tick(a) == Traits::Tick(b) && Traits::Values(a) == Traits::Values(b);
  };
  const auto add = [&](const EntryPair<Entry>& pair) {
    differences.Add(TimelineDifference(list, pair, are_losses));
  };
  if (std::equal(before.begin(), before.end(), after.begin(), after.end(), equal)) return;
  if (are_losses && list.stays) {
    const auto pairs = PairsInOrder(before, after, [](const Entry&) { return true; });
    if (pairs) {
      std::for_each(pairs->begin(), pairs->end(), add);
      return;
    }
  }
  const ListComparison<Entry> comparison(before, after,
                                         are_losses ? MovedEnds::kAreChanges : MovedEnds::kAreMoved);
  std::for_each(comparison.pairs().begin(), comparison.pairs().end(), add);
  if (!comparison.reordered()) return;
  Difference difference;
  difference.subject = list.subject;
  difference.action = Action::kReordered;
  difference.place.list = list.name;
  differences.Add(difference);
}

}  // namespace zuna_toolkit
