// The heads of a damaged legacy log and of its songs (docs/format-0.md, "change_log_header" and "song_log").
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "format_converter/version0/containers/change_log.h"
#include "toolkit/rescue/internal/record_bytes.h"
#include "toolkit/rescue/internal/salvage.h"

namespace zuna_toolkit {

inline constexpr std::size_t kSmallestLogHead = 30;  ///< with an empty label and no show name, in bytes

/// Where the log `bytes` ends as its header states; 0 where it states no length.
std::uint64_t StatedLogEnd(std::string_view bytes);

/// What can be read of the head of a log.
struct LogHead {
  version0::ChangeLogV0 log;
  std::size_t read_end = 0;          ///< of what is read of it
  std::size_t end = 0;               ///< where the songs begin
  std::vector<std::string> missing;  ///< which fields cannot be read
  std::string doubt;                 ///< why the identifier may be damaged; empty where it is not
};

/// The head of the log `bytes`, whose first undamaged song begins at `first_song`.
LogHead ReadLogHead(std::string_view bytes, std::size_t first_song);

/// The fields of a song log before its sequences.
struct SongLogHead {
  std::size_t record_length;
  std::string_view number;
  std::string_view name;
  std::string_view length;
};

/// The head of the song log at `in`, which is not ok where it is not whole.
SongLogHead ReadSongLogHead(RecordCursor& in);

/// Whether the head of a song log with a number and a name is at `at`.
bool BeginsSongLog(std::string_view bytes, std::size_t at);

}  // namespace zuna_toolkit
