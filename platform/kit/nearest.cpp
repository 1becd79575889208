// What a mistyped word may have been meant to be.
#include "kit/nearest.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace kit {

namespace {

/// The longest word that is looked at: comparing takes the time of both lengths multiplied.
constexpr std::size_t kLongest = 64;

}  // namespace

std::size_t EditDistance(std::string_view from, std::string_view to) {
  // Rows of the table of distances between the beginnings of both: the two before the current one, and it.
  std::vector<std::size_t> earlier;
  std::vector<std::size_t> last(to.size() + 1);
  std::vector<std::size_t> current(to.size() + 1);
  std::iota(last.begin(), last.end(), std::size_t{0});
  for (std::size_t i = 1; i <= from.size(); ++i) {
    current[0] = i;
    for (std::size_t j = 1; j <= to.size(); ++j) {
      const std::size_t replaced = last[j - 1] + (from[i - 1] == to[j - 1] ? 0 : 1);
      current[j] = std::min({last[j] + 1, current[j - 1] + 1, replaced});
      const bool exchanged = i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1];
      if (exchanged) current[j] = std::min(current[j], earlier[j - 2] + 1);
    }
    earlier = std::exchange(last, current);
  }
  return last.back();
}

std::string Suggestion(std::string_view word, const std::vector<std::string>& known) {
  if (word.size() > kLongest) return "";
  const std::string* nearest = nullptr;
  std::size_t most = word.size() / 3;
  for (const std::string& candidate : known) {
    const std::size_t distance = EditDistance(word, candidate);
    if (distance > most || (nearest != nullptr && distance == most)) continue;
    nearest = &candidate;
    most = distance;
  }
  return nearest == nullptr ? "" : "; did you mean \"" + *nearest + "\"?";
}

}  // namespace kit
