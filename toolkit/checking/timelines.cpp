// What is wrong with the entries of timelines.
#include "toolkit/checking/internal/timeline_check.h"

#include <algorithm>
#include <bit>
#include <limits>

#include "kit/format.h"

namespace zuna_toolkit {

void TimelineCheck::CheckOrder(const std::string& entry, const Place& place, std::uint32_t before) const {
  if (*place.tick < before) {
    findings_.Add(FindingCode::kTimelineOutOfOrder, entry + " is after the one at " + std::to_string(before),
                  place);
  } else if (*place.tick == before) {
    findings_.Add(FindingCode::kTimelineDuplicate, entry + " is not the only one there", place);
  }
}

void TimelineCheck::CheckEntry(const TL::Tempo& tempo, const std::string& entry, const Place& place) const {
  if (tempo.microseconds == 0) return findings_.Add(FindingCode::kTempoZero, entry + " is 0 us", place);
  CheckQuarterNote(tempo.microseconds, entry, place);
}

void TimelineCheck::CheckEntry(const version0::RTempo& tempo, const std::string& entry,
                               const Place& place) const {
  // Where the division is 0, which is a finding of its own, a tick stands for the quarter note.
  const std::int64_t microseconds = tempo.microseconds(std::max<std::uint16_t>(song_.division, 1));
  if (microseconds <= 0 || microseconds > std::numeric_limits<std::uint32_t>::max()) {
    findings_.Add(
        FindingCode::kTempoZero,
        entry + kit::format(" has no length: a tick of %.9g s", static_cast<double>(tempo.seconds_per_tick)),
        place);
  } else if (song_.division != 0) {
    CheckQuarterNote(microseconds, entry, place);
  }
  if (tempo.notated_32_per_click == 0 || tempo.notated_32_per_quarter == 0) {
    findings_.Add(FindingCode::kClickZero,
                  entry + kit::format(" has a click of %u of %u 32nds", tempo.notated_32_per_click,
                                      tempo.notated_32_per_quarter),
                  place);
  }
}

void TimelineCheck::CheckQuarterNote(std::int64_t microseconds, const std::string& entry,
                                     const Place& place) const {
  constexpr std::int64_t kMinute = 60000000;  // microseconds
  constexpr std::int64_t kSlowest = 10;       // quarter notes a minute
  constexpr std::int64_t kFastest = 1000;
  if (microseconds >= kMinute / kFastest && microseconds <= kMinute / kSlowest) return;
  findings_.Add(FindingCode::kTempoUnlikely,
                entry + kit::format(" is %.6g quarter notes a minute",
                                    static_cast<double>(kMinute) / static_cast<double>(microseconds)),
                place);
}

void TimelineCheck::CheckEntry(const TL::Key& key, const std::string& entry, const Place& place) const {
  CheckKey(key.key, key.mode, entry, place);
}

void TimelineCheck::CheckEntry(const version0::RKey& key, const std::string& entry,
                               const Place& place) const {
  CheckKey(key.key, key.mode, entry, place);
}

void TimelineCheck::CheckKey(int key, unsigned mode, const std::string& entry, const Place& place) const {
  constexpr int kMostSharps = 7;
  if (key >= -kMostSharps && key <= kMostSharps && mode <= 1) return;
  findings_.Add(FindingCode::kKeyUnknown, entry + kit::format(" is key %d mode %u", key, mode), place);
}

void TimelineCheck::CheckEntry(const TL::Meter& meter, const std::string& entry, const Place& place) const {
  CheckSignature(meter.numerator, meter.denominator, entry, place);
  if (meter.clocks_per_click != 0 && meter.notated_32_per_quarter != 0) return;
  findings_.Add(FindingCode::kClickZero,
                entry + kit::format(" has a click of %u clocks and %u 32nds per quarter",
                                    meter.clocks_per_click, meter.notated_32_per_quarter),
                place);
}

void TimelineCheck::CheckEntry(const version0::RMeter& meter, const std::string& entry,
                               const Place& place) const {
  CheckSignature(meter.numerator, meter.denominator, entry, place);
}

void TimelineCheck::CheckEntry(const TL::BarsBeats& label, const std::string& entry,
                               const Place& place) const {
  findings_.CheckText(label.bar_number(), entry, place);
}

void TimelineCheck::CheckEntry(const version0::RBarsBeats& label, const std::string& entry,
                               const Place& place) const {
  findings_.CheckText(label.label, entry, place);
}

void TimelineCheck::CheckSignature(unsigned numerator, unsigned denominator, const std::string& entry,
                                   const Place& place) const {
  const std::string text = entry + kit::format(" is %u/%u", numerator, denominator);
  if (numerator == 0 || denominator == 0) {
    findings_.Add(FindingCode::kMeterZero, text, place);
  } else if (!std::has_single_bit(denominator)) {
    findings_.Add(FindingCode::kDenominatorNoPower, text, place);
  }
}

}  // namespace zuna_toolkit
