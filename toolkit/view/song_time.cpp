// When a tick of a song is played.
#include "toolkit/view/internal/song_time.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "kit/format.h"

namespace zuna_toolkit {

namespace {

constexpr double kDefaultMicroseconds = 500000;  // of a quarter note: 120 a minute

/// Where an edit that changes the time of a song begins or ends.
struct Turn {
  std::uint32_t tick;
  int cuts;         ///< that begin here, less those that end
  double rate = 1;  ///< of the time from here on to the time before
};

/// Adds the turns of the edits in `list`; `rate` tells by how much an edit multiplies time.
template <typename Event, typename Rate>
void AddTurns(const CL::SongLog::SharedList<Event>& list, int cuts, Rate rate, std::vector<Turn>& turns) {
  if (!list) return;
  for (const Event& event : list->events) {
    if (event.end <= event.start) continue;
    const double factor = rate(event);
    if (!std::isfinite(factor) || factor <= 0) continue;
    turns.push_back({event.start, cuts, factor});
    turns.push_back({event.end, -cuts, 1 / factor});
  }
}

std::vector<Turn> TurnsOf(const CL::SongLog& log) {
  std::vector<Turn> turns;
  AddTurns(
      log.cuts, 1, [](const CL::Cut&) { return 1.0; }, turns);
  AddTurns(
      log.repeats, 0, [](const CL::Repeat& repeat) { return repeat.value(); }, turns);
  AddTurns(
      log.tempo_scales, 0, [](const CL::TempoScale& scale) { return 1 / scale.value(); }, turns);
  std::stable_sort(turns.begin(), turns.end(), [](const Turn& a, const Turn& b) { return a.tick < b.tick; });
  return turns;
}

}  // namespace

SongTime::SongTime(const zuna_midi::SongData& song) : division_(song.division), length_(song.song_length) {
  if (division_ == 0) return;
  std::vector<TL::Tempo> tempos = song.timeline ? song.timeline->tempos : std::vector<TL::Tempo>();
  std::stable_sort(tempos.begin(), tempos.end(),
                   [](const TL::Tempo& a, const TL::Tempo& b) { return a.time < b.time; });
  stretches_.push_back({0, 0, kDefaultMicroseconds / 1e6 / division_});
  for (const TL::Tempo& tempo : tempos) {
    const Stretch stretch{tempo.time, SecondsAt(tempo.time), tempo.tick_time(division_)};
    if (stretches_.back().tick == tempo.time) stretches_.pop_back();
    stretches_.push_back(stretch);
  }
}

double SongTime::SecondsAt(std::uint32_t tick) const {
  const auto later = [](std::uint32_t time, const Stretch& stretch) { return time < stretch.tick; };
  const auto next = std::upper_bound(stretches_.begin(), stretches_.end(), tick, later);
  if (next == stretches_.begin()) return 0;
  const Stretch& stretch = *std::prev(next);
  return stretch.seconds + (tick - stretch.tick) * stretch.seconds_per_tick;
}

double SongTime::PlayedSeconds(const CL::SongLog& log) const {
  double seconds = 0;
  double rate = 1;
  int cuts = 0;
  std::uint32_t from = 0;
  const auto play_to = [&](std::uint32_t tick) {
    const std::uint32_t to = std::min(tick, length_);
    if (cuts == 0 && to > from) seconds += (SecondsAt(to) - SecondsAt(from)) * rate;
    from = std::max(from, to);
  };
  for (const Turn& turn : TurnsOf(log)) {
    play_to(turn.tick);
    cuts += turn.cuts;
    rate *= turn.rate;
  }
  play_to(length_);
  return seconds;
}

std::string ClockText(double seconds) {
  constexpr double kLongest = 1e9;
  const double shown = seconds > 0 ? std::min(seconds, kLongest) : 0;  // what is no number too
  const auto tenths = static_cast<std::uint64_t>(std::llround(shown * 10));
  const auto whole = static_cast<unsigned long>(tenths / 10);
  const auto tenth = static_cast<unsigned long>(tenths % 10);
  if (whole < 3600) return kit::format("%lu:%02lu.%lu", whole / 60, whole % 60, tenth);
  return kit::format("%lu:%02lu:%02lu.%lu", whole / 3600, whole / 60 % 60, whole % 60, tenth);
}

}  // namespace zuna_toolkit
