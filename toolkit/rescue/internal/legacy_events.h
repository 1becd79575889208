// The events of a song of a legacy show as bytes that may be damaged (docs/format-0.md, "event_object").
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "format_converter/version0/containers/song_data.h"
#include "toolkit/rescue/rescue.h"

namespace zuna_toolkit {

inline constexpr std::size_t kEventSize = sizeof(version0::EventObject);  ///< in bytes

/// The identifiers of `tracks`, which have their count before them.
std::string VoicesOf(std::string_view tracks);

/// How many events that a writer may have written end at the end of `bytes`, one after the other.
std::size_t CountEventsBack(std::string_view bytes);

/// Events that can be read.
struct MendedEvents {
  std::string bytes;
  std::size_t end = 0;            ///< after the last of them
  std::vector<ByteRange> unread;  ///< bytes before `end` that gave nothing
};

/// Takes the events between `begin` and the end of `bytes` that a writer may have written, at most so many.
/// After damage, it goes on where three of them follow each other, or where they reach the end. `voices` are
/// those of the song, or empty where it has none.
MendedEvents MendEvents(std::string_view bytes, std::size_t begin, std::string_view voices, std::size_t most);

/// That so many events are no MIDI message.
std::string OddEventsRemark(std::size_t count);

/// What shows that events of `song` are not what its writer wrote.
std::vector<std::string> EventRemarks(const version0::SongData& song);

}  // namespace zuna_toolkit
