// Makes a timeline of the meta events of a MIDI file (docs/midi.md).
#include "toolkit/midi/internal/import_timeline.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace zuna_toolkit::midi {

namespace {

constexpr TL::Tempo kDefaultTempo{0, 500'000};
constexpr TL::Meter kDefaultMeter{0, 4, 4, 24, 8};
constexpr std::uint8_t kMaxDenominatorPower = 7;  // 2^7 is the largest that a byte holds

struct MetaKind {
  std::uint8_t type;
  const char* one;
  const char* many;
};

constexpr MetaKind kLostKinds[] = {
    {smf::kSequenceNumber, "sequence number", "sequence numbers"},
    {smf::kText, "text", "texts"},
    {smf::kCopyright, "copyright notice", "copyright notices"},
    {smf::kInstrumentName, "instrument name", "instrument names"},
    {smf::kLyric, "lyric", "lyrics"},
    {smf::kMarker, "marker", "markers"},
    {smf::kCuePoint, "cue point", "cue points"},
    {smf::kProgramName, "program name", "program names"},
    {smf::kDeviceName, "device name", "device names"},
    {smf::kChannelPrefix, "channel prefix", "channel prefixes"},
    {smf::kPort, "port number", "port numbers"},
    {smf::kSmpteOffset, "SMPTE offset", "SMPTE offsets"},
    {smf::kSequencerSpecific, "sequencer-specific event", "sequencer-specific events"},
};

std::uint8_t ByteAt(const smf::MetaEvent& meta, std::size_t index) {
  return static_cast<std::uint8_t>(meta.data[index]);
}

class TimelineMaker {
 public:
  explicit TimelineMaker(Report& report) : report_(report) {}

  void Add(const smf::MetaEvent& meta) {
    switch (meta.type) {
      case smf::kTempo:
        return AddTempo(meta);
      case smf::kMeter:
        return AddMeter(meta);
      case smf::kKey:
        return AddKey(meta);
      case smf::kTrackName:
        return;
      default:
        return CountLost(meta.type);
    }
  }

  TL::Timeline Finish() {
    if (timeline_.tempos.empty() || timeline_.tempos.front().time != 0) {
      timeline_.tempos.insert(timeline_.tempos.begin(), kDefaultTempo);
    }
    if (timeline_.meters.empty() || timeline_.meters.front().time != 0) {
      timeline_.meters.insert(timeline_.meters.begin(), kDefaultMeter);
    }
    return std::move(timeline_);
  }

 private:
  /// tt tt tt: microseconds of a quarter note, big-endian
  void AddTempo(const smf::MetaEvent& meta) {
    if (meta.data.size() < 3) return report_.not_kept.Add("malformed tempo", "malformed tempos");
    const auto microseconds =
        static_cast<std::uint32_t>(ByteAt(meta, 0) << 16 | ByteAt(meta, 1) << 8 | ByteAt(meta, 2));
    Append(timeline_.tempos, {meta.time, microseconds}, "tempo", "tempos");
  }

  /// nn dd cc bb: numerator, power of two of the denominator, clocks of a click, notated 32nds of 24 clocks
  void AddMeter(const smf::MetaEvent& meta) {
    if (meta.data.size() < 4) return report_.not_kept.Add("malformed meter", "malformed meters");
    if (ByteAt(meta, 0) == 0 || ByteAt(meta, 1) > kMaxDenominatorPower) {
      return report_.not_kept.Add("meter with the numerator 0 or a denominator above 128",
                                  "meters with the numerator 0 or a denominator above 128");
    }
    const auto denominator = static_cast<std::uint8_t>(1U << ByteAt(meta, 1));
    Append(timeline_.meters, {meta.time, ByteAt(meta, 0), denominator, ByteAt(meta, 2), ByteAt(meta, 3)},
           "meter", "meters");
  }

  /// sf mi: sharps (positive) or flats (negative), 0 for major and 1 for minor
  void AddKey(const smf::MetaEvent& meta) {
    if (meta.data.size() < 2) return report_.not_kept.Add("malformed key", "malformed keys");
    const auto sharps = static_cast<std::int8_t>(ByteAt(meta, 0));
    Append(timeline_.keys, {meta.time, sharps, ByteAt(meta, 1)}, "key", "keys");
  }

  /// Of several entries at one time the last one holds.
  template <typename Entry>
  void Append(std::vector<Entry>& list, const Entry& entry, const std::string& one, const std::string& many) {
    if (list.empty() || list.back().time != entry.time) {
      list.push_back(entry);
      return;
    }
    if (list.back() != entry) {
      report_.not_kept.Add(one + " with another one at its time", many + " with another one at their time");
    }
    list.back() = entry;
  }

  void CountLost(std::uint8_t type) {
    const auto same = [&](const MetaKind& kind) { return kind.type == type; };
    const auto* found = std::find_if(std::begin(kLostKinds), std::end(kLostKinds), same);
    if (found == std::end(kLostKinds))
      return report_.not_kept.Add("unknown meta event", "unknown meta events");
    report_.not_kept.Add(found->one, found->many);
  }

  Report& report_;
  TL::Timeline timeline_;
};

}  // namespace

TL::Timeline ImportTimeline(const smf::File& file, Report& report) {
  std::vector<const smf::MetaEvent*> metas;
  for (const smf::Track& track : file.tracks) {
    for (const smf::MetaEvent& meta : track.metas) metas.push_back(&meta);
  }
  std::stable_sort(metas.begin(), metas.end(),
                   [](const auto* a, const auto* b) { return a->time < b->time; });
  TimelineMaker maker(report);
  for (const smf::MetaEvent* meta : metas) maker.Add(*meta);
  return maker.Finish();
}

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

}  // namespace zuna_toolkit::midi
