// Where two current logs differ.

#include "tests/support/log_equality.h"

#include <algorithm>
#include <type_traits>
#include <vector>

namespace zuna_test {

namespace {

template <typename Event>
bool Same(const Event& a, const Event& b) {
  if (a.label != b.label) return false;
  if constexpr (std::is_base_of_v<CL::PairedEvent, Event>) {
    return a.start == b.start && a.end == b.end && a.value_bits == b.value_bits;
  } else if constexpr (std::is_same_v<Event, CL::Marker>) {
    return a.position == b.position && a.text == b.text;
  } else {
    return a.position == b.position && a.second_word == b.second_word;
  }
}

/// The first place where two lists differ, or nothing.
template <typename Event>
std::string ListDifference(const std::string& name, const CL::EventList<Event>& a,
                           const CL::EventList<Event>& b) {
  const auto [left, right] =
      std::mismatch(a.events.begin(), a.events.end(), b.events.begin(), b.events.end(), Same<Event>);
  if (left == a.events.end() && right == b.events.end()) return "";
  return name + " " + std::to_string(left - a.events.begin());
}

std::string SongDifference(const CL::SongLog& a, const CL::SongLog& b) {
  if (a.song_number != b.song_number) return "song number";
  if (a.song_name != b.song_name) return "song name";
  if (a.division != b.division) return "division";
  if (a.song_length != b.song_length) return "song length";
  if (a.attacca != b.attacca) return "attacca";
  for (const std::string& difference :
       {ListDifference("vamp", *a.vamps, *b.vamps), ListDifference("repeat", *a.repeats, *b.repeats),
        ListDifference("cut", *a.cuts, *b.cuts), ListDifference("transpose", *a.transposes, *b.transposes),
        ListDifference("tempo scale", *a.tempo_scales, *b.tempo_scales),
        ListDifference("marker", *a.markers, *b.markers), ListDifference("click", *a.clicks, *b.clicks),
        ListDifference("fermata", *a.fermatas, *b.fermatas),
        ListDifference("caesura", *a.caesuras, *b.caesuras)}) {
    if (!difference.empty()) return difference;
  }
  return "";
}

}  // namespace

std::string FirstDifference(const CL::ChangeLog& a, const CL::ChangeLog& b) {
  if (a.show_name != b.show_name) return "show name";
  if (a.log_label != b.log_label) return "log label";
  if (!(a.identifier == b.identifier)) return "identifier";
  if (a.log_tag_pair != b.log_tag_pair) return "tag pair";
  if (a.song_logs().size() != b.song_logs().size()) return "count of songs";
  for (auto left = a.song_logs().begin(), right = b.song_logs().begin(); left != a.song_logs().end();
       ++left, ++right) {
    const std::string name = "song \"" + left->first + "\"";
    if (left->first != right->first) return name + ", key";
    const std::string difference = SongDifference(*left->second, *right->second);
    if (!difference.empty()) return std::string(name).append(", ").append(difference);
  }
  return "";
}

}  // namespace zuna_test
