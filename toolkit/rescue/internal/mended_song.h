// What can be read of a damaged song of a legacy show (docs/format-0.md, "song_data").
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "toolkit/rescue/rescue.h"

namespace zuna_toolkit {

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

}  // namespace zuna_toolkit
