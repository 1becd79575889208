// Where two current shows differ.

#include "tests/support/show_equality.h"

#include <algorithm>
#include <vector>

namespace zuna_test {

namespace {

/// The first place where two lists differ, or nothing.
template <typename Entry>
std::string ListDifference(const std::string& name, const std::vector<Entry>& a,
                           const std::vector<Entry>& b) {
  const auto [left, right] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
  if (left == a.end() && right == b.end()) return "";
  return name + " " + std::to_string(left - a.begin());
}

std::string TimelineDifference(const TL::Timeline& a, const TL::Timeline& b) {
  for (const std::string& difference :
       {ListDifference("tempo", a.tempos, b.tempos), ListDifference("bars/beats", a.bars_beats, b.bars_beats),
        ListDifference("key", a.keys, b.keys), ListDifference("page number", a.page_numbers, b.page_numbers),
        ListDifference("meter", a.meters, b.meters)}) {
    if (!difference.empty()) return difference;
  }
  return "";
}

std::string TrackDifference(const zuna_midi::VoiceTrack& a, const zuna_midi::VoiceTrack& b) {
  if (a.track_number != b.track_number) return "track number";
  if (a.name != b.name) return "name";
  if (a.reserved != b.reserved) return "reserved field";
  return ListDifference("message", a.messages, b.messages);
}

std::string VoicesDifference(const zuna_midi::VoiceData& a, const zuna_midi::VoiceData& b) {
  if (a.tracks().size() != b.tracks().size()) return "count of voices";
  for (auto left = a.tracks().begin(), right = b.tracks().begin(); left != a.tracks().end();
       ++left, ++right) {
    const std::string name = "voice " + std::to_string(left->first);
    if (left->first != right->first) return name + ", key";
    const std::string difference = TrackDifference(*left->second, *right->second);
    if (!difference.empty()) return std::string(name).append(", ").append(difference);
  }
  return "";
}

std::string SongDifference(const zuna_midi::SongData& a, const zuna_midi::SongData& b) {
  if (a.song_number != b.song_number) return "song number";
  if (a.song_name != b.song_name) return "song name";
  if (a.division != b.division) return "division";
  if (a.song_length != b.song_length) return "song length";
  const std::string difference = TimelineDifference(*a.timeline, *b.timeline);
  return difference.empty() ? VoicesDifference(*a.voice_data, *b.voice_data) : difference;
}

}  // namespace

std::string FirstDifference(const zuna_midi::ShowData& a, const zuna_midi::ShowData& b) {
  if (a.show_name != b.show_name) return "show name";
  if (a.songs().size() != b.songs().size()) return "count of songs";
  for (auto left = a.songs().begin(), right = b.songs().begin(); left != a.songs().end(); ++left, ++right) {
    const std::string name = "song \"" + left->first + "\"";
    if (left->first != right->first) return name + ", key";
    const std::string difference = SongDifference(*left->second, *right->second);
    if (!difference.empty()) return std::string(name).append(", ").append(difference);
  }
  return "";
}

}  // namespace zuna_test
