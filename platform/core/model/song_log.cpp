// The edits of a song, and their detailed text.

#include "CL/song_log.h"

#include <algorithm>
#include <ostream>

#include "kit/format.h"

namespace CL {

namespace {

template <typename Event>
void WriteList(std::ostream& os, const std::string& tabs, const char* name,
               const SongLog::SharedList<Event>& list) {
  os << tabs << kit::format("%sSequence(evt_count=%zu):", name, list ? list->events.size() : 0) << std::endl;
  if (!list) return;
  for (const Event& event : list->events) {
    os << tabs << '\t';
    event.WriteString(os);
    os << std::endl;
  }
}

}  // namespace

SongLog::SongLog(const std::string& number, const std::string& name, unsigned short ticks_per_quarter,
                 unsigned int length)
    : song_number(number), song_name(name), division(ticks_per_quarter), song_length(length) {}

SongLog::SongLog(const SongLog&) = default;
SongLog::SongLog(SongLog&&) noexcept = default;
SongLog& SongLog::operator=(const SongLog&) = default;
SongLog& SongLog::operator=(SongLog&&) noexcept = default;
SongLog::~SongLog() = default;

void SongLog::WriteStringDetailed(std::ostream& os, int indent) const {
  const std::string tabs(static_cast<std::size_t>(std::max(indent, 0)), '\t');
  os << tabs << "SongLog(songNumber=" << song_number << ", songName=" << song_name
     << kit::format(", division=%u, songLength=%lu, attacca=%u)", static_cast<unsigned>(division),
                    static_cast<unsigned long>(song_length), static_cast<unsigned>(attacca))
     << std::endl;
  const std::string list_tabs = tabs + '\t';
  WriteList(os, list_tabs, "Vamp", vamps);
  WriteList(os, list_tabs, "Repeat", repeats);
  WriteList(os, list_tabs, "Cut", cuts);
  WriteList(os, list_tabs, "Transpose", transposes);
  WriteList(os, list_tabs, "TempoScale", tempo_scales);
  WriteList(os, list_tabs, "Marker", markers);
  WriteList(os, list_tabs, "Click", clicks);
  WriteList(os, list_tabs, "Fermata", fermatas);
  WriteList(os, list_tabs, "Caesura", caesuras);
}

}  // namespace CL
