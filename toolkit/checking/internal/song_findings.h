// Hands out the findings of one song.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "kit/utf8.h"
#include "toolkit/checking/checking.h"

namespace zuna_toolkit {

/// Hands the findings of one song, or of the whole document where the number is empty, to a sink.
class SongFindings {
 public:
  SongFindings(std::string song, const FindingSink& sink) : song_(std::move(song)), sink_(sink) {}

  /// Fills in the song, the severity and the remedy.
  void Add(FindingCode code, std::string problem, const Place& place = {}) const {
    const Explanation& explanation = FindingExplanations()[static_cast<std::size_t>(code)];
    sink_({code, SeverityOf(code), song_, place, std::move(problem), std::string(explanation.remedy)});
  }

  /// Adds a finding where a text, which people know as `name`, is not UTF-8.
  void CheckText(std::string_view text, const std::string& name, const Place& place = {}) const {
    if (!kit::IsUtf8(text)) Add(FindingCode::kTextNotUtf8, name + " is not valid UTF-8", place);
  }

 private:
  std::string song_;
  const FindingSink& sink_;
};

}  // namespace zuna_toolkit
