// Checks timelines, current and legacy ones alike.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "TL/timeline.h"
#include "format_converter/version0/containers/timeline.h"
#include "toolkit/checking/internal/check_models.h"
#include "toolkit/internal/first_tempo.h"

namespace zuna_toolkit {

/// The song that a timeline belongs to, as far as the timeline depends on it.
struct TimelineSong {
  std::uint16_t division = 0;  ///< ticks of a quarter note
  std::uint32_t length = 0;    ///< ticks
};

/// A list of a timeline.
struct CheckedList {
  std::string_view name;  ///< as the text form calls it
  std::string_view one;   ///< what people call an entry
};

/// Checks one timeline. The methods of the same name differ in the model of their entries.
class TimelineCheck {
 public:
  TimelineCheck(const TimelineSong& song, const SongFindings& findings) : song_(song), findings_(findings) {}

  void Check(const TL::Timeline& timeline) const {
    CheckTempos(timeline.tempos);
    CheckList({"barsBeats", "bar label"}, timeline.bars_beats);
    CheckList({"keys", "key"}, timeline.keys);
    CheckList({"pageNumbers", "page number"}, timeline.page_numbers);
    CheckMeters(timeline.meters, timeline.tempos);
  }

  void Check(const version0::Timeline& timeline) const {
    findings_.CheckText(timeline.name, "the name of the timeline");
    CheckTempos(timeline.tempos);
    CheckList({"barsBeats", "bar label"}, timeline.bars_beats);
    CheckList({"keys", "key"}, timeline.keys);
    CheckList({"pageNumbers", "page number"}, timeline.page_nums);
    CheckMeters(timeline.meters, timeline.tempos);
  }

 private:
  template <typename Tempo>
  void CheckTempos(const std::vector<Tempo>& tempos) const {
    const CheckedList list{"tempos", "tempo"};
    CheckFirst(list, tempos, FindingCode::kTempoMissing, FindingCode::kTempoLate);
    CheckList(list, tempos);
  }

  template <typename Meter, typename Tempo>
  void CheckMeters(const std::vector<Meter>& meters, const std::vector<Tempo>& tempos) const {
    const CheckedList list{"meters", "meter"};
    CheckFirst(list, meters, FindingCode::kMeterMissing, FindingCode::kMeterLate);
    if (!meters.empty() && !tempos.empty() && LacksFirstTempo(tempos, meters)) {
      const std::uint32_t time = meters.front().time;
      findings_.Add(FindingCode::kMeterWithoutTempo,
                    "the first meter, at " + std::to_string(time) + ", has no tempo",
                    {.list = list.name, .tick = time});
    }
    CheckList(list, meters);
  }

  template <typename Entry>
  void CheckFirst(const CheckedList& list, const std::vector<Entry>& entries, FindingCode missing,
                  FindingCode late) const {
    const std::string one(list.one);
    if (entries.empty()) {
      findings_.Add(missing, "there is no " + one, {.list = list.name});
    } else if (entries.front().time != 0) {
      findings_.Add(late,
                    "the first " + one + " is at " + std::to_string(entries.front().time) + ", not at 0",
                    {.list = list.name, .tick = entries.front().time});
    }
  }

  template <typename Entry>
  void CheckList(const CheckedList& list, const std::vector<Entry>& entries) const {
    for (std::size_t i = 0; i < entries.size(); ++i) {
      const std::uint32_t time = entries[i].time;
      const Place place{.list = list.name, .index = i, .tick = time};
      const std::string entry = "the " + std::string(list.one) + " at " + std::to_string(time);
      if (i != 0) CheckOrder(entry, place, entries[i - 1].time);
      if (IsBeyond(time, song_.length)) {
        findings_.Add(FindingCode::kTimelineBeyondEnd,
                      entry + " is after the end of the song at " + std::to_string(song_.length), place);
      }
      CheckEntry(entries[i], entry, place);
    }
  }

  void CheckOrder(const std::string& entry, const Place& place, std::uint32_t before) const;

  /// What is wrong with the values of an entry.
  ///@{
  void CheckEntry(const TL::Tempo& tempo, const std::string& entry, const Place& place) const;
  void CheckEntry(const version0::RTempo& tempo, const std::string& entry, const Place& place) const;
  void CheckEntry(const TL::Key& key, const std::string& entry, const Place& place) const;
  void CheckEntry(const version0::RKey& key, const std::string& entry, const Place& place) const;
  void CheckEntry(const TL::Meter& meter, const std::string& entry, const Place& place) const;
  void CheckEntry(const version0::RMeter& meter, const std::string& entry, const Place& place) const;
  void CheckEntry(const TL::BarsBeats& label, const std::string& entry, const Place& place) const;
  void CheckEntry(const version0::RBarsBeats& label, const std::string& entry, const Place& place) const;
  template <typename AnyValue>
  void CheckEntry(const AnyValue&, const std::string&, const Place&) const {}
  ///@}

  /// Whether a quarter note of this length is one that music has.
  void CheckQuarterNote(std::int64_t microseconds, const std::string& entry, const Place& place) const;
  void CheckKey(int key, unsigned mode, const std::string& entry, const Place& place) const;
  void CheckSignature(unsigned numerator, unsigned denominator, const std::string& entry,
                      const Place& place) const;

  const TimelineSong& song_;
  const SongFindings& findings_;
};

}  // namespace zuna_toolkit
