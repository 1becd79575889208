// Hands out the differences of one song.
#pragma once

#include <string>
#include <utility>

#include "toolkit/comparison/comparison.h"
#include "toolkit/internal/bar_labels.h"

namespace zuna_toolkit {

/// Why two documents are compared.
enum class Purpose {
  kDifferences,  ///< they are two documents
  kLosses,       ///< the second one is what comes back of the first; differences are named by their causes
};

/// Hands the differences of one song, or of the whole document where the number is empty, to a sink.
class SongDifferences {
 public:
  SongDifferences(std::string song, const DifferenceSink& sink, Purpose purpose)
      : song_(std::move(song)), sink_(sink), purpose_(purpose) {}

  /// Whether the differences are losses of a conversion.
  bool are_losses() const { return purpose_ == Purpose::kLosses; }

  /// The bars of the song in the first document.
  void SetBars(const BarLabels& bars) { bars_ = bars; }

  /// Fills in the song and the bar.
  void Add(Difference difference) const {
    difference.song = song_;
    if (difference.place.tick) difference.place.bar = bars_.At(*difference.place.tick);
    sink_(difference);
  }

  /// A field of the song as text: nothing where both are equal. A field whose empty value is `none` was added
  /// or dropped where it is that on one side.
  void AddField(Subject subject, const std::string& before, const std::string& after,
                const std::string& none = "") const {
    if (before == after) return;
    Difference difference;
    difference.subject = subject;
    difference.action = after == none ? Action::kDropped : Action::kChanged;
    if (before == none) difference.action = Action::kAdded;
    if (difference.action != Action::kAdded) difference.before = before;
    if (difference.action != Action::kDropped) difference.after = after;
    Add(std::move(difference));
  }

  /// A field that a conversion sets to what is in `after`.
  void AddDefaulted(Subject subject, const std::string& before, const std::string& after) const {
    if (before == after) return;
    Difference difference;
    difference.subject = subject;
    difference.action = Action::kDefaulted;
    difference.before = before;
    difference.after = after;
    Add(std::move(difference));
  }

  /// The same as AddField() for a number, which is none where it is 0.
  void AddNumber(Subject subject, unsigned before, unsigned after) const {
    AddField(subject, std::to_string(before), std::to_string(after), "0");
  }

 private:
  std::string song_;
  const DifferenceSink& sink_;
  Purpose purpose_;
  BarLabels bars_;
};

/// Calls `both(differences, a, b)` with the values of the songs of one number, and adds those that only one
/// side has. The maps have the same order.
template <typename Before, typename After, typename Both>
void CompareSongs(const Before& before, const After& after, const DifferenceSink& sink, Purpose purpose,
                  Both both) {
  const auto less = before.key_comp();
  auto a = before.begin();
  auto b = after.begin();
  while (a != before.end() || b != after.end()) {
    Difference difference;
    if (b == after.end() || (a != before.end() && less(a->first, b->first))) {
      difference.action = Action::kDropped;
      difference.before = a->first;
      SongDifferences((a++)->first, sink, purpose).Add(std::move(difference));
    } else if (a == before.end() || less(b->first, a->first)) {
      difference.action = Action::kAdded;
      difference.after = b->first;
      SongDifferences((b++)->first, sink, purpose).Add(std::move(difference));
    } else {
      SongDifferences differences(a->first, sink, purpose);
      both(differences, a->second, b->second);
      ++a;
      ++b;
    }
  }
}

}  // namespace zuna_toolkit
