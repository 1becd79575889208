// The losses of a conversion.
#pragma once

#include <string>
#include <vector>

#include "toolkit/comparison/loss_text.h"
#include "toolkit/document/document.h"

namespace zuna_cli {

/// The losses of one conversion.
class Losses {
 public:
  /// What `before` loses in `after`, which a conversion made of it. `is_restored` says whether `up` brings
  /// back the name of a show and divisions out of the companion. `keep_json` keeps every single loss as JSON.
  /// Throws zuna_toolkit::Error.
  Losses(const zuna_toolkit::Document& before, const zuna_toolkit::Document& after, bool is_restored,
         bool keep_json);

  bool empty() const { return groups_.groups().empty(); }

  /// A line for each kind of loss, with the first one of it and its code. On the way up also one for every
  /// bar label that was cut and all tracks of one id.
  std::vector<std::string> Lines() const;

  /// The same without those that do no harm, for one of many files: their lines would be the same for all
  /// files and hide the others.
  std::vector<std::string> HarmfulLines() const;

  /// Those that do no harm by kind, as "1 show name, 2 delta times"; empty for none.
  std::string HarmlessText() const;

  /// All kinds.
  std::vector<zuna_toolkit::LossKind> Kinds() const;

  /// All of them as objects of JSON, separated by commas; empty where they were not kept.
  const std::string& json() const { return json_; }

 private:
  struct Line {
    std::string text;
    bool is_harmless;
  };

  void Add(const zuna_toolkit::Difference& loss, bool keep_json);
  bool IsHarmless(const zuna_toolkit::Difference& loss) const;
  zuna_toolkit::LossKind KindOf(const zuna_toolkit::DifferenceGroups::Group& group) const;
  std::vector<std::string> Lines(bool with_harmless) const;

  bool is_up_;
  bool is_restored_;
  zuna_toolkit::DifferenceGroups groups_;
  zuna_toolkit::DifferenceGroups grouped_lines_;  ///< those without lines of their own
  std::vector<Line> own_lines_;
  std::string json_;
};

}  // namespace zuna_cli
