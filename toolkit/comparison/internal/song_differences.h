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

/// Pairs songs of one name where only one on either side has it. A song without a name is not paired.
template <typename Songs>
void PairUniqueNames(const Songs& before, const Songs& after, RenumberedSongs& renumbered) {
  struct Namesakes {
    std::vector<std::string> dropped;  ///< their numbers
    std::vector<std::string> added;
  };
  std::map<std::string_view, Namesakes> by_name;
  for (const auto& [number, song] : before) {
    if (song->song_name.empty() || after.contains(number) || renumbered.numbers.contains(number)) continue;
    by_name[song->song_name].dropped.push_back(number);
  }
  for (const auto& [number, song] : after) {
    if (song->song_name.empty() || before.contains(number) || renumbered.taken.contains(number)) continue;
    by_name[song->song_name].added.push_back(number);
  }
  for (const auto& [name, songs] : by_name) {
    if (songs.dropped.size() != 1 || songs.added.size() != 1) continue;
    renumbered.numbers.emplace(songs.dropped.front(), songs.added.front());
    renumbered.taken.insert(songs.added.front());
  }
}

/// Finds them among the songs whose numbers only one side has: first those of the same content, then those of
/// one name. `same(a, b)` tells whether songs of one name and length have the same content. Only a few songs
/// of one name and length are tried for each.
template <typename Songs, typename Same>
RenumberedSongs FindRenumbered(const Songs& before, const Songs& after, Same same) {
  constexpr int kMostTries = 4;
  const auto key = [](const auto& song) {
    return std::pair(std::string_view(song.song_name), song.song_length);
  };
  std::multimap<std::pair<std::string_view, std::uint32_t>, typename Songs::const_iterator> added;
  for (auto i = after.begin(); i != after.end(); ++i) {
    if (!before.contains(i->first)) added.emplace(key(*i->second), i);
  }
  RenumberedSongs renumbered;
  for (const auto& [number, song] : before) {
    if (added.empty() || after.contains(number)) continue;
    auto [candidate, end] = added.equal_range(key(*song));
    for (int tries = 0; tries < kMostTries && candidate != end; ++tries, ++candidate) {
      if (!same(*song, *candidate->second->second)) continue;
      renumbered.numbers.emplace(number, candidate->second->first);
      renumbered.taken.insert(candidate->second->first);
      added.erase(candidate);
      break;
    }
  }
  PairUniqueNames(before, after, renumbered);
  return renumbered;
}

/// The name of a song of the current model; empty for a legacy one.
template <typename Song>
std::string NameOfSong(const Song& song) {
  if constexpr (requires { song->song_name; }) return song->song_name;
  return "";
}

/// Calls `both(differences, a, b)` with the values of the songs of one number, and of those that got another
/// number, and adds those that only one side has. The maps have the same order.
template <typename Before, typename After, typename Both>
void CompareSongs(const Before& before, const After& after, const DifferenceSink& sink, Purpose purpose,
                  Both both, const RenumberedSongs& renumbered = {}) {
  const auto less = before.key_comp();
  auto a = before.begin();
  auto b = after.begin();
  while (a != before.end() || b != after.end()) {
    Difference difference;
    if (b == after.end() || (a != before.end() && less(a->first, b->first))) {
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
