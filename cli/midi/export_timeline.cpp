#include "cli/midi/export_timeline.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <initializer_list>

namespace zuna_cli::midi {

namespace {

constexpr std::uint32_t kMaxMicroseconds = 0xFFFFFF;
constexpr int kMaxSharps = 7;
constexpr std::uint16_t kMinor = 1;

std::string Bytes(std::initializer_list<unsigned> values) {
  std::string bytes;
  for (const unsigned value : values) bytes.push_back(static_cast<char>(value));
  return bytes;
}

void AddMeters(const TL::Timeline& timeline, smf::Track& track, Report& report) {
  for (const TL::Meter& meter : timeline.meters) {
    if (meter.numerator == 0 || !std::has_single_bit(meter.denominator)) {
      report.not_kept.Add("meter with the numerator 0 or a denominator that is no power of two",
                          "meters with the numerator 0 or a denominator that is no power of two");
      continue;
    }
    const auto power = static_cast<unsigned>(std::countr_zero(meter.denominator));
    track.metas.push_back(
        {meter.time, smf::kMeter,
         Bytes({meter.numerator, power, meter.clocks_per_click, meter.notated_32_per_quarter})});
  }
}

void AddKeys(const TL::Timeline& timeline, smf::Track& track, Report& report) {
  for (const TL::Key& key : timeline.keys) {
    if (std::abs(key.key) > kMaxSharps || key.mode > kMinor) {
      report.not_kept.Add("key that MIDI does not know", "keys that MIDI does not know");
      continue;
    }
    track.metas.push_back({key.time, smf::kKey, Bytes({static_cast<std::uint8_t>(key.key), key.mode})});
  }
}

void AddTempos(const TL::Timeline& timeline, smf::Track& track, Report& report) {
  for (const TL::Tempo& tempo : timeline.tempos) {
    if (tempo.microseconds > kMaxMicroseconds) {
      report.not_kept.Add("tempo of more than 16777215 microseconds",
                          "tempos of more than 16777215 microseconds");
      continue;
    }
    track.metas.push_back({tempo.time, smf::kTempo,
                           Bytes({tempo.microseconds >> 16, tempo.microseconds >> 8, tempo.microseconds})});
  }
}

/// Removes the events that stand more than kMaxQuantity ticks after the one before them.
void RemoveTooLate(std::vector<smf::MetaEvent>& metas, Report& report) {
  std::uint32_t last = 0;
  std::erase_if(metas, [&](const smf::MetaEvent& meta) {
    const bool too_late = meta.time - last > smf::kMaxQuantity;
    if (too_late) {
      CountTooLate(report);
    } else {
      last = meta.time;
    }
    return too_late;
  });
}

}  // namespace

void CountTooLate(Report& report) {
  report.not_kept.Add("event more than 268435455 ticks after the one before",
                      "events more than 268435455 ticks after the one before");
}

smf::Track ExportTimeline(const TL::Timeline& timeline, const std::string& song_name, Report& report) {
  smf::Track track;
  if (!song_name.empty()) track.metas.push_back({0, smf::kTrackName, song_name});
  AddMeters(timeline, track, report);
  AddKeys(timeline, track, report);
  AddTempos(timeline, track, report);
  std::stable_sort(track.metas.begin(), track.metas.end(),
                   [](const auto& a, const auto& b) { return a.time < b.time; });
  RemoveTooLate(track.metas, report);
  report.not_kept.Add("bar label", "bar labels", timeline.bars_beats.size());
  report.not_kept.Add("page number", "page numbers", timeline.page_numbers.size());
  return track;
}

}  // namespace zuna_cli::midi
