// A song of a damaged legacy show: what can be read of it, and what it needs before it is part of a new one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "format_converter/version0/containers/song_data.h"
#include "toolkit/rescue/internal/legacy_records.h"
#include "toolkit/rescue/rescue.h"

namespace zuna_toolkit {

inline constexpr std::string_view kTimelineMagic = "TLMN";

/// The fields of a song before its events.
struct SongHead {
  std::string_view number;
  std::string_view name;
  std::string_view division;
  std::string_view length;
  std::string_view tracks;  ///< with their count
  std::size_t stated_events = 0;
  std::size_t events = 0;  ///< where they begin
};

/// The head of the song at `in`, as far as it goes; `in` is not ok where it is not whole.
SongHead ReadSongHead(RecordCursor& in, Steps& steps);

/// What can be read of a damaged song.
struct MendedSong {
  RescuedSong told;               ///< its place, and what is missing
  std::string bytes;              ///< of a song whose lengths and counts are right
  std::vector<ByteRange> unread;  ///< what gave nothing, inside of it
  std::string problem;            ///< why there are no bytes; empty where there are
};

/// Takes what can be read of the song from `begin` up to the end of `bytes`. `is_show` tells whether the file
/// is known to be a show; otherwise a song needs eight events that a writer may have written.
MendedSong MendSong(std::string_view bytes, std::size_t begin, bool is_show);

/// Why `song` cannot be written; empty where it can.
std::string WhyNotWritable(const version0::SongData& song);

/// Gives the song what a conversion up does not do without, and adds to `remarks` what that was: a name for
/// every voice, and where remarks tell of damage, a tempo and a meter.
void MakeConvertible(version0::SongData& song, std::vector<std::string>& remarks);

}  // namespace zuna_toolkit
