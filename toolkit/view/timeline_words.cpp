// What people call the entries of a timeline.
#include "toolkit/view/internal/timeline_words.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <string_view>

#include "kit/format.h"

namespace zuna_toolkit {

long long TenthsOfBpm(const TL::Tempo& tempo) {
  constexpr unsigned char kClocksPerQuarter = 24;
  return tempo.microseconds == 0 ? 0 : std::llround(tempo.bpm(kClocksPerQuarter) * 10);
}

std::string TempoText(const TL::Tempo& tempo) {
  const long long tenths = TenthsOfBpm(tempo);
  const std::string whole = std::to_string(tenths / 10);
  return tenths % 10 == 0 ? whole : whole + "." + std::to_string(tenths % 10);
}

std::string KeyText(const TL::Key& key) {
  constexpr int kMost = 7;
  constexpr std::array<std::string_view, 2 * kMost + 1> kMajor = {
      "C♭", "G♭", "D♭", "A♭", "E♭", "B♭", "F", "C", "G", "D", "A", "E", "B", "F♯", "C♯"};
  constexpr std::array<std::string_view, 2 * kMost + 1> kMinor = {
      "A♭", "E♭", "B♭", "F", "C", "G", "D", "A", "E", "B", "F♯", "C♯", "G♯", "D♯", "A♯"};
  if (std::abs(int{key.key}) > kMost || key.mode > 1) {
    return kit::format("%d %s, mode %u", std::abs(int{key.key}), key.key < 0 ? "flats" : "sharps", key.mode);
  }
  const int fifths = key.key + kMost;  // above the lowest key
  const auto index = static_cast<std::size_t>(fifths);
  return key.mode == 0 ? std::string(kMajor.at(index)) + " major" : std::string(kMinor.at(index)) + " minor";
}

std::string MeterText(const TL::Meter& meter) {
  return kit::format("%u/%u", meter.numerator, meter.denominator);
}

std::string PageText(const TL::PageNumber& page) { return kit::format("p. %u", page.page); }

}  // namespace zuna_toolkit
