// What the formats share: lost songs, numbers of songs, and the sums of a report.
#include "toolkit/rescue/internal/salvage.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "kit/numeric_string_compare.h"
#include "kit/utf8.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kLongestNumber = 240;  // bytes, so that a count fits into a legacy text
constexpr std::uint64_t kSmallestSong = 16;  // bytes

bool IsSaved(const RescuedSong& song) { return song.state != SongState::kLost; }

/// The songs that came back.
std::vector<RescuedSong*> SavedSongs(RescueReport& report) {
  std::vector<RescuedSong*> songs;
  for (RescuedSong& song : report.songs) {
    if (IsSaved(song)) songs.push_back(&song);
  }
  return songs;
}

/// The ranges in order; those that touch are one, and empty ones are left out.
std::vector<ByteRange> Joined(std::vector<ByteRange> ranges) {
  std::sort(ranges.begin(), ranges.end(),
            [](const ByteRange& a, const ByteRange& b) { return a.begin < b.begin; });
  std::vector<ByteRange> joined;
  for (const ByteRange& range : ranges) {
    if (!joined.empty() && range.begin <= joined.back().end) {
      joined.back().end = std::max(joined.back().end, range.end);
    } else if (range.begin < range.end) {
      joined.push_back(range);
    }
  }
  return joined;
}

/// A run of songs that stand in order.
using SongRun = std::vector<RescuedSong*>;

/// The songs in runs, the longest first. Of files that were joined, each is a run.
std::vector<SongRun> RunsOf(const std::vector<RescuedSong*>& songs, SongOrder order) {
  std::vector<SongRun> runs;
  for (RescuedSong* song : songs) {
    if (runs.empty() || !IsNumberBefore(runs.back().back()->number, song->number, order)) runs.emplace_back();
    runs.back().push_back(song);
  }
  std::stable_sort(runs.begin(), runs.end(),
                   [](const SongRun& a, const SongRun& b) { return a.size() > b.size(); });
  return runs;
}

/// The numbers that songs were given.
struct GivenNumbers {
  std::set<std::string> taken;
  std::map<std::string, unsigned> last;  ///< in parentheses, by what stands before it
};

std::string OwnNumber(const std::string& number, GivenNumbers& given) {
  if (given.taken.insert(number).second) return number;
  const std::string stem = number.substr(0, kLongestNumber);
  unsigned& last = given.last.try_emplace(stem, 1).first->second;
  while (true) {
    std::string own = stem + " (" + std::to_string(++last) + ")";
    if (given.taken.insert(own).second) return own;
  }
}

void GiveOwnNumber(RescuedSong& song, GivenNumbers& given) {
  std::string number = OwnNumber(song.number, given);
  if (number == song.number) return;
  song.remarks.push_back("another song has its number, " + NumberText(song.number));
  song.number = std::move(number);
}

}  // namespace

bool IsNumberBefore(std::string_view a, std::string_view b, SongOrder order) {
  return order == SongOrder::kNumeric ? kit::NumericStringCompare()(std::string(a), std::string(b)) : a < b;
}

void GiveOwnNumbers(RescueReport& report, SongOrder order) {
  GivenNumbers given;
  for (const SongRun& run : RunsOf(SavedSongs(report), order)) {
    for (RescuedSong* song : run) GiveOwnNumber(*song, given);
  }
}

bool IsTyped(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = kit::Utf8Length(text);
    if (length == 0 || kit::IsControl(kit::CodePoint(text.substr(0, length)))) return false;
    text.remove_prefix(length);
  }
  return true;
}

bool IsNumber(std::string_view number) { return !number.empty() && IsTyped(number); }

void AddLost(RescueReport& report, RescuedSong song, const std::string& problem) {
  song.state = SongState::kLost;
  song.remarks = {problem};
  report.songs.push_back(std::move(song));
}

std::string LengthRemark(std::size_t size, std::uint64_t stated) {
  return "has " + Counted(size, "byte", "bytes") + ", and its header states " + std::to_string(stated);
}

void CloseReport(RescueReport& report, std::size_t size, std::uint64_t missing_bytes) {
  std::vector<ByteRange> read = report.framing;
  for (const RescuedSong& song : report.songs) {
    if (IsSaved(song)) read.push_back({*song.offset, *song.end});
  }
  report.framing = Joined(std::move(report.framing));
  std::uint64_t at = 0;
  for (const ByteRange& range : Joined(std::move(read))) {
    if (range.begin > at) report.unread.push_back({at, range.begin});
    at = range.end;
  }
  if (size > at) report.unread.push_back({at, size});
  report.unread = Joined(std::move(report.unread));
  std::uint64_t room = missing_bytes;
  for (const ByteRange& range : report.unread) room += range.end - range.begin;
  const std::uint64_t found = report.songs.size();
  if (!report.stated_songs) {
    if (room == 0) report.known_songs = found;
  } else if (*report.stated_songs >= found && *report.stated_songs - found <= room / kSmallestSong) {
    report.known_songs = report.stated_songs;
  } else {
    report.remarks.push_back("states " + Counted(*report.stated_songs, "song", "songs") + ", and " +
                             std::to_string(found) + (found == 1 ? " was" : " were") + " found");
  }
}

std::size_t RescueReport::saved() const {
  return static_cast<std::size_t>(std::count_if(songs.begin(), songs.end(), IsSaved));
}

bool RescueReport::complete() const {
  const bool all_whole = std::all_of(songs.begin(), songs.end(), [](const RescuedSong& song) {
    return song.state == SongState::kWhole && (song.remarks.empty() || song.vouched);
  });
  return all_whole && !changed && missing.empty() && unread.empty() && known_songs == saved();
}

}  // namespace zuna_toolkit
