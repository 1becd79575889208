#pragma once

#include <memory>
#include <type_traits>

#include "CL/change_log.h"

namespace zuna_core {

/// An event, respectively a song log, that is to be filled: numbers 0, texts empty.
template <class Event>
Event BlankEvent() {
  if constexpr (std::is_same_v<Event, CL::Marker>) {
    return {0, "", ""};
  } else if constexpr (std::is_same_v<Event, CL::Caesura>) {
    return {0, ""};
  } else {
    return {0, 0, "", 0};
  }
}

std::shared_ptr<CL::SongLog> BlankSongLog();

/// Adds a song log unless one of the same number is there already; false then.
bool AddNewSongLog(CL::ChangeLog& log, std::shared_ptr<CL::SongLog> song);

/// What a reader reports where that gives false.
inline constexpr const char* kDuplicateSongLog = "the log has another song of the same number";

/// Throws std::logic_error, naming the song, for a log that no file can state: one that keeps a song under
/// another number than its own.
void CheckWritable(const CL::ChangeLog& log);

}  // namespace zuna_core
