// The formulas of tempos, bar labels and meters.

#include "TL/timeline.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "kit/utf8.h"

namespace TL {

namespace {

constexpr double kMicrosecondsPerSecond = 1e6;
/// Microseconds of a minute times the 24 clocks of a quarter note.
constexpr double kClockMicrosecondsPerMinute = 60 * kMicrosecondsPerSecond * 24;

/// Microseconds of a quarter note at `clicks` clicks a minute, as a whole number.
double WholeMicroseconds(double clicks, unsigned char clocks_per_click) {
  return std::floor(kClockMicrosecondsPerMinute / (clicks * clocks_per_click) + 0.5);
}

}  // namespace

double Tempo::tick_time(unsigned short division) const {
  return (microseconds / kMicrosecondsPerSecond) / division;
}

double Tempo::bpm(unsigned char clocks_per_click) const {
  const double clicks = kClockMicrosecondsPerMinute / (static_cast<double>(microseconds) * clocks_per_click);
  const double whole = std::floor(clicks + 0.5);
  return whole > 0 && WholeMicroseconds(whole, clocks_per_click) == microseconds ? whole : clicks;
}

void BarsBeats::bar_number(const std::string& label) {
  const std::string_view whole = std::string_view(label).substr(0, label.find('\0'));
  const std::string_view kept = kit::CutUtf8(whole, text_.size() - 1);
  text_.fill('\0');
  std::copy(kept.begin(), kept.end(), text_.begin());
}

std::uint8_t Meter::notated_32_per_click() const {
  // Both factors are below 256, so adding half of the divisor before dividing rounds halves up exactly.
  constexpr unsigned kClocksPerQuarter = 24;
  const unsigned product = static_cast<unsigned>(clocks_per_click) * notated_32_per_quarter;
  return static_cast<std::uint8_t>((product + kClocksPerQuarter / 2) / kClocksPerQuarter);
}

}  // namespace TL
