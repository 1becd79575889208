// Differences as short texts for tests.

#pragma once

#include <string>
#include <vector>

#include "toolkit/comparison/comparison.h"
#include "toolkit/conversion/conversion.h"

namespace zuna_test {

/// "song 1: tempo-changed tempos[0] at 480: 500000 us -> 400000 us"
inline std::string Describe(const zuna_toolkit::Difference& difference) {
  std::string text = difference.song.empty() ? "" : "song " + difference.song + ": ";
  text += CodeText(difference);
  if (!difference.place.list.empty()) {
    text += ' ' + std::string(difference.place.list) + '[' + std::to_string(difference.place.index) + ']';
  }
  if (difference.place.tick) text += " at " + std::to_string(*difference.place.tick);
  if (!difference.place.bar.empty()) text += " in bar " + difference.place.bar;
  if (!difference.where.empty()) text += " (" + difference.where + ')';
  text += ": " + difference.before + " -> " + difference.after;
  if (difference.count != 1) text += " x" + std::to_string(difference.count);
  return text;
}

/// Collects what `compare(sink)` hands out.
template <typename Compare>
std::vector<std::string> Collected(Compare compare) {
  std::vector<std::string> texts;
  compare([&](const zuna_toolkit::Difference& difference) { texts.push_back(Describe(difference)); });
  return texts;
}

/// What a current document loses on its way down.
inline std::vector<std::string> DownLosses(const zuna_toolkit::Document& document) {
  return Collected([&](const auto& sink) { LossesOfDown(document, zuna_toolkit::Down(document), sink); });
}

}  // namespace zuna_test
