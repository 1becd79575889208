// What the formats give back of damaged plaintexts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "cmn/file_format.h"
#include "toolkit/document/document.h"
#include "toolkit/rescue/rescue.h"

namespace zuna_toolkit {

/// The songs of a plaintext, as far as they came back.
struct Salvage {
  Document::Model model;
  cmn::FileVersion version;
  RescueReport report;  ///< nothing in it is vouched for yet, and `unread` only has what is inside of songs
  std::uint64_t missing_bytes = 0;  ///< how many bytes the content says that it had after its end
  bool wants_checksum = false;      ///< files of this form have one
};

/// Tells what the salvage of a file of `size` bytes has not read, and how many songs there were. The file is
/// known to lack so many bytes at its end.
void CloseReport(RescueReport& report, std::size_t size, std::uint64_t missing_bytes);

/// That a file has `size` bytes where its header states another number.
std::string LengthRemark(std::size_t size, std::uint64_t stated);

/// Each reads what is there of a plaintext that is, or was, of this kind.
///@{
Salvage SalvageLegacyShow(std::string_view plaintext);
Salvage SalvageLegacyLog(std::string_view plaintext);
Salvage SalvageText(std::string_view plaintext);
///@}

/// The same of a binary file of a current version, whose header states so many bytes; 0 where it has none.
Salvage SalvageBinary(std::string_view plaintext, cmn::FileKind kind, cmn::FileVersion version,
                      std::uint64_t stated_size);

/// The key that every song of a text form begins with, as it is written.
inline constexpr std::string_view kSongKey = "\"songNumber\"";

/// The key of the kind in every text form, as it is written.
inline constexpr std::string_view kKindKey = "\"kind\"";

/// Where the object of a text ends whose first brace is at `at`, before `end`; none where its braces do not
/// match.
std::optional<std::size_t> EndOfObject(std::string_view text, std::size_t at, std::size_t end);

/// Limits what looking for songs costs. Looking at one place takes no step; going through a record that may
/// be a song takes one for each of its parts. Undamaged songs are few enough, whatever is between them.
class Steps {
 public:
  explicit Steps(std::size_t size) : left_(kForEachByte * size + kAlways) {}

  /// Whether there is one left, which is taken.
  bool Take(std::size_t count = 1) {
    if (count > left_) left_ = 0;
    if (left_ == 0) return false;
    left_ -= count;
    return true;
  }

 private:
  static constexpr std::size_t kForEachByte = 8;
  static constexpr std::size_t kAlways = 4096;

  std::size_t left_;
};

/// The order in which writers write the songs of a file.
enum class SongOrder {
  kNumeric,  ///< "2" before "10"
  kBytes,    ///< "10" before "2"
};

/// Whether a writer writes a song of number `a` before one of number `b`.
bool IsNumberBefore(std::string_view a, std::string_view b, SongOrder order);

/// Gives each song of `report` that came back a number of its own. Of several songs of one number, the one
/// among most songs in order keeps it; the others get a count, as in "12 (2)", and a remark.
void GiveOwnNumbers(RescueReport& report, SongOrder order);

/// The same; then calls take(number, song) with the number of each of `songs`, which are those of `report`
/// that came back.
template <typename Songs, typename Take>
void NumberSongs(RescueReport& report, SongOrder order, Songs& songs, Take take) {
  GiveOwnNumbers(report, order);
  auto song = songs.begin();
  for (const RescuedSong& told : report.songs) {
    if (told.state != SongState::kLost) take(told.number, *song++);
  }
}

/// Reads what is there of a plaintext of any kind and version: the one of which most comes back, where
/// nothing else tells.
Salvage SalvageAny(std::string_view plaintext);

/// Whether a person may have typed `text`.
bool IsTyped(std::string_view text);

/// Whether `number` shows that there was a song: a person may have typed it, and it is not empty.
bool IsNumber(std::string_view number);

/// Adds a song of which nothing came back, and why.
void AddLost(RescueReport& report, RescuedSong song, const std::string& problem);

/// Where the next song begins after the one from `begin` to `song_end`, which is undamaged as far as it
/// shows. Where a song lacks bytes at its end, its lengths lead into the next one, which begins inside of it
/// then.
template <typename Format>
std::size_t BeginOfNext(Format& format, std::size_t begin, std::size_t song_end, std::size_t end) {
  if (song_end == end || format.WholeEnd(song_end)) return song_end;
  for (std::size_t at = begin + 1; at < song_end; ++at) {
    const std::optional<std::size_t> next_end = format.WholeEnd(at);
    if (next_end && *next_end != song_end) return at;
  }
  return song_end;
}

/// Goes through the songs between `at` and `end`. `format` has three functions: WholeEnd(at) gives the end of
/// an undamaged song that begins there, if one does; TakeWhole(begin, end) and TakeDamaged(begin, end) are
/// called for undamaged songs and for what is between them.
template <typename Format>
void WalkSongs(Format& format, std::size_t at, std::size_t end) {
  while (at < end) {
    std::size_t begin = at;
    std::optional<std::size_t> song_end;
    while (begin < end && !(song_end = format.WholeEnd(begin))) ++begin;
    if (begin > at) format.TakeDamaged(at, begin);
    if (!song_end) return;
    const std::size_t next = BeginOfNext(format, begin, *song_end, end);
    if (next == *song_end) {
      format.TakeWhole(begin, next);
    } else {
      format.TakeDamaged(begin, next);
    }
    at = next;
  }
}

}  // namespace zuna_toolkit
