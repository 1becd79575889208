// Hands out the differences of one song.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

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

  /// The bars of the song in the first document, and in the second one for what only that one has.
  ///@{
  void SetBars(const BarLabels& bars) { bars_ = added_bars_ = bars; }
  void SetBars(const BarLabels& before, const BarLabels& after) {
    bars_ = before;
    added_bars_ = after;
  }
  ///@}

  /// Fills in the song and the bar. What changed its time has moved.
  void Add(Difference difference) const {
    difference.song = song_;
    const bool is_added = difference.action == Action::kAdded;
    const Place& place = difference.place;
    if (place.tick) difference.place.bar = (is_added ? added_bars_ : bars_).At(*place.tick);
    const bool has_moved = place.after_tick && place.tick != place.after_tick;
    if (!are_losses() && has_moved && difference.action == Action::kChanged) {
      difference.action = Action::kMoved;
    }
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
  BarLabels added_bars_;
};

/// Songs that have another number in the second document.
struct RenumberedSongs {
  std::map<std::string, std::string> numbers;  ///< by their numbers in the first document
  std::set<std::string> taken;                 ///< those numbers
};

/// The songs of one number that are the same one by their names or their content.
template <typename Songs, typename Same>
std::set<std::string_view> KeptNumbers(const Songs& before, const Songs& after, Same same) {
  std::set<std::string_view> kept;
  for (const auto& [number, song] : before) {
    const auto found = after.find(number);
    if (found == after.end()) continue;
    const auto& other = *found->second;
    const bool is_same = song->song_length == other.song_length && same(*song, other);
    if (is_same || song->song_name == other.song_name) kept.insert(number);
  }
  return kept;
}

/// Finds songs that have another number in the second document. The documents live as long as it does.
template <typename Songs, typename Same>
class RenumberedSearch {
 public:
  /// `same(a, b)` tells whether songs of one length have the same content.
  RenumberedSearch(const Songs& before, const Songs& after, Same same)
      : before_(before), after_(after), same_(same), kept_(KeptNumbers(before, after, same)) {}

  /// First those of the same content and name, then those of the same content, then those of a name that no
  /// other song has. A song without a name is not paired by it.
  RenumberedSongs Find() {
    PairContent(
        [](const auto& song) { return std::pair(std::string_view(song.song_name), song.song_length); });
    PairContent([](const auto& song) { return song.song_length; });
    PairUniqueNames();
    return std::move(found_);
  }

 private:
  bool IsLost(const std::string& number) const {
    return !kept_.contains(number) && !found_.numbers.contains(number);
  }
  bool IsGained(const std::string& number) const {
    return !kept_.contains(number) && !found_.taken.contains(number);
  }
  void Pair(const std::string& number, const std::string& other) {
    found_.numbers.emplace(number, other);
    found_.taken.insert(other);
  }

  /// Only a few songs of one key are tried for each.
  template <typename KeyOf>
  void PairContent(KeyOf key) {
    constexpr int kMostTries = 4;
    using Key = decltype(key(*before_.begin()->second));
    std::multimap<Key, typename Songs::const_iterator> gained;
    for (auto i = after_.begin(); i != after_.end(); ++i) {
      if (IsGained(i->first)) gained.emplace(key(*i->second), i);
    }
    for (const auto& [number, song] : before_) {
      if (gained.empty() || !IsLost(number)) continue;
      auto [candidate, end] = gained.equal_range(key(*song));
      for (int tries = 0; tries < kMostTries && candidate != end; ++tries, ++candidate) {
        if (!same_(*song, *candidate->second->second)) continue;
        Pair(number, candidate->second->first);
        gained.erase(candidate);
        break;
      }
    }
  }

  void PairUniqueNames() {
    struct Namesakes {
      std::vector<std::string> lost;  ///< their numbers
      std::vector<std::string> gained;
    };
    std::map<std::string_view, Namesakes> by_name;
    for (const auto& [number, song] : before_) {
      if (!song->song_name.empty() && IsLost(number)) by_name[song->song_name].lost.push_back(number);
    }
    for (const auto& [number, song] : after_) {
      if (!song->song_name.empty() && IsGained(number)) by_name[song->song_name].gained.push_back(number);
    }
    for (const auto& [name, songs] : by_name) {
      if (songs.lost.size() == 1 && songs.gained.size() == 1) Pair(songs.lost.front(), songs.gained.front());
    }
  }

  const Songs& before_;
  const Songs& after_;
  Same same_;
  std::set<std::string_view> kept_;
  RenumberedSongs found_;
};

/// What RenumberedSearch finds.
template <typename Songs, typename Same>
RenumberedSongs FindRenumbered(const Songs& before, const Songs& after, Same same) {
  return RenumberedSearch(before, after, same).Find();
}

/// The name of a song of the current model; empty for a legacy one.
template <typename Song>
std::string NameOfSong(const Song& song) {
  if constexpr (requires { song->song_name; }) return song->song_name;
  return "";
}

/// Calls `both(differences, a, b)` with the values of the songs of one number, and of those that got another
/// number, and adds those that only one side has, as `subject`. The maps have the same order.
template <typename Before, typename After, typename Both>
void CompareSongs(Subject subject, const Before& before, const After& after, const DifferenceSink& sink,
                  Purpose purpose, Both both, const RenumberedSongs& renumbered = {}) {
  const auto less = before.key_comp();
  auto a = before.begin();
  auto b = after.begin();
  while (a != before.end() || b != after.end()) {
    Difference difference;
    difference.subject = subject;
    const bool is_one_number =
        a != before.end() && b != after.end() && !less(a->first, b->first) && !less(b->first, a->first);
    const bool are_others =
        is_one_number && (renumbered.numbers.contains(a->first) || renumbered.taken.contains(b->first));
    if (b == after.end() || are_others || (a != before.end() && less(a->first, b->first))) {
      const auto found = renumbered.numbers.find(a->first);
      const bool has_left = found == renumbered.numbers.end();
      difference.action = has_left ? Action::kDropped : Action::kRenumbered;
      difference.before = NameOfSong(a->second);
      if (!has_left) difference.after = found->second;
      SongDifferences differences(a->first, sink, purpose);
      differences.Add(std::move(difference));
      if constexpr (std::is_same_v<Before, After>) {
        if (!has_left) both(differences, a->second, after.find(found->second)->second);
      }
      ++a;
    } else if (a == before.end() || less(b->first, a->first)) {
      difference.action = Action::kAdded;
      difference.after = NameOfSong(b->second);
      const auto added = b++;
      if (renumbered.taken.contains(added->first)) continue;
      SongDifferences(added->first, sink, purpose).Add(std::move(difference));
    } else {
      SongDifferences differences(a->first, sink, purpose);
      both(differences, a->second, b->second);
      ++a;
      ++b;
    }
  }
}

}  // namespace zuna_toolkit
