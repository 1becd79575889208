// Hands out the findings of one song.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "kit/utf8.h"
#include "toolkit/checking/checking.h"
#include "toolkit/internal/bar_labels.h"

namespace zuna_toolkit {

/// Hands the findings of one song, or of the whole document where the number is empty, to a sink.
class SongFindings {
 public:
  SongFindings(std::string song, const FindingSink& sink) : song_(std::move(song)), sink_(sink) {}

  /// The bars of the song.
  void SetBars(const BarLabels& bars) { bars_ = bars; }

  /// Fills in the song, the bar, the severity and the remedy.
  void Add(FindingCode code, std::string problem, Place place = {}) const {
    if (place.tick) place.bar = bars_.At(*place.tick);
    const Explanation& explanation = FindingExplanations()[static_cast<std::size_t>(code)];
    sink_({code, SeverityOf(code), song_, std::move(place), std::move(problem),
           std::string(explanation.remedy)});
  }

  /// Adds a finding where a text, which people know as `name`, is not UTF-8.
  void CheckText(std::string_view text, const std::string& name, const Place& place = {}) const {
    if (!kit::IsUtf8(text)) Add(FindingCode::kTextNotUtf8, name + " is not valid UTF-8", place);
  }

 private:
  std::string song_;
  const FindingSink& sink_;
  BarLabels bars_;
};

}  // namespace zuna_toolkit
