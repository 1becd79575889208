// Findings as short texts for tests.

#pragma once

#include <string>
#include <vector>

#include "toolkit/checking/checking.h"

namespace zuna_test {

/// "error tempo-zero, song 1, tempos[0] at 480: the tempo at 480 is 0 us"
inline std::string Describe(const zuna_toolkit::Finding& finding) {
  std::string text = finding.severity == zuna_toolkit::Severity::kError ? "error " : "warning ";
  text += CodeText(finding.code);
  if (!finding.song.empty()) text += ", song " + finding.song;
  if (!finding.place.list.empty()) {
    text += ", " + std::string(finding.place.list) + '[' + std::to_string(finding.place.index) + ']';
  }
  if (finding.place.voice) text += " of voice " + std::to_string(*finding.place.voice);
  if (finding.place.tick) text += " at " + std::to_string(*finding.place.tick);
  return text + ": " + finding.problem;
}

/// All findings about a document.
inline std::vector<std::string> FindingsOf(const zuna_toolkit::Document& document) {
  std::vector<std::string> findings;
  Check(document, [&](const zuna_toolkit::Finding& finding) { findings.push_back(Describe(finding)); });
  return findings;
}

}  // namespace zuna_test
