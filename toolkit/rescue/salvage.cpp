// What the formats share: numbers of songs, and the sums of a report.
#include "toolkit/rescue/internal/salvage.h"

#include <algorithm>
#include <map>
#include <vector>

#include "kit/numeric_string_compare.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kLongestNumber = 240;  // bytes, so that a count fits into a legacy text

bool IsSaved(const RescuedSong& song) { return song.state != SongState::kLost; }

/// The songs that came back.
std::vector<RescuedSong*> SavedSongs(RescueReport& report) {
  std::vector<RescuedSong*> songs;
  for (RescuedSong& song : report.songs) {
    if (IsSaved(song)) songs.push_back(&song);
  }
  return songs;
}

bool IsSongBefore(const RescuedSong& a, const RescuedSong& b, SongOrder order) {
  return order == SongOrder::kNumeric ? kit::NumericStringCompare()(a.number, b.number) : a.number < b.number;
}

/// Whether the song at `index` stands in order.
std::vector<bool> SongsInOrder(const std::vector<RescuedSong*>& songs, SongOrder order) {
  std::vector<bool> in_order;
  for (std::size_t i = 0; i < songs.size(); ++i) {
    in_order.push_back((i == 0 || IsSongBefore(*songs[i - 1], *songs[i], order)) &&
                       (i + 1 == songs.size() || IsSongBefore(*songs[i], *songs[i + 1], order)));
  }
  return in_order;
}

/// How often each number was given.
using GivenNumbers = std::map<std::string, unsigned>;

std::string OwnNumber(const std::string& number, GivenNumbers& given) {
  unsigned& count = given[number];
  if (++count == 1) return number;
  return OwnNumber(number.substr(0, kLongestNumber) + " (" + std::to_string(count) + ")", given);
}

void GiveOwnNumber(RescuedSong& song, GivenNumbers& given) {
  std::string number = OwnNumber(song.number, given);
  if (number == song.number) return;
  song.remarks.push_back("another song has its number, " + NumberText(song.number));
  song.number = std::move(number);
}

}  // namespace

void GiveOwnNumbers(RescueReport& report, SongOrder order) {
  const std::vector<RescuedSong*> songs = SavedSongs(report);
  const std::vector<bool> in_order = SongsInOrder(songs, order);
  GivenNumbers given;
  for (const bool wanted : {true, false}) {
    for (std::size_t i = 0; i < songs.size(); ++i) {
      if (in_order[i] == wanted) GiveOwnNumber(*songs[i], given);
    }
  }
}

void AddLost(RescueReport& report, RescuedSong song, std::size_t end, const std::string& problem) {
  report.unread.push_back({*song.offset, end});
  song.state = SongState::kLost;
  song.remarks = {problem};
  report.songs.push_back(std::move(song));
}

std::size_t RescueReport::saved() const {
  return static_cast<std::size_t>(std::count_if(songs.begin(), songs.end(), IsSaved));
}

bool RescueReport::complete() const {
  const bool all_whole = std::all_of(songs.begin(), songs.end(), [](const RescuedSong& song) {
    return song.state == SongState::kWhole && song.remarks.empty();
  });
  return all_whole && !changed && missing.empty() && unread.empty() &&
         saved() == stated_songs.value_or(saved());
}

}  // namespace zuna_toolkit
