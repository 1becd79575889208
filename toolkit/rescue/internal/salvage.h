// What the formats give back of damaged plaintexts.
#pragma once

#include <cstddef>
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
  RescueReport report;  ///< nothing in it is vouched for yet
};

/// Each reads what is there of a plaintext that is, or was, of this kind.
///@{
Salvage SalvageLegacyShow(std::string_view plaintext);
Salvage SalvageLegacyLog(std::string_view plaintext);
Salvage SalvageBinary(std::string_view plaintext, cmn::FileKind kind, cmn::FileVersion version);
Salvage SalvageText(std::string_view plaintext);
///@}

inline constexpr std::size_t kBinaryHeaderSize = 10;  ///< of current binary files

/// The key that every song of a text form begins with, as it is written.
inline constexpr std::string_view kSongKey = "\"songNumber\"";

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

/// Gives each song of `report` that came back a number of its own. Of several songs of one number, one that
/// stands in order keeps it; the others get a count, as in "12 (2)", and a remark.
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

/// Adds a song of which nothing came back from its offset up to `end`, and why.
void AddLost(RescueReport& report, RescuedSong song, std::size_t end, const std::string& problem);

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
    format.TakeWhole(begin, *song_end);
    at = *song_end;
  }
}

}  // namespace zuna_toolkit
