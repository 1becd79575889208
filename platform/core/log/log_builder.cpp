#include "platform/core/log/log_builder.h"

#include <stdexcept>
#include <utility>

#include "kit/format.h"
#include "platform/core/text/quote.h"

namespace zuna_core {

std::shared_ptr<CL::SongLog> BlankSongLog() {
  return std::make_shared<CL::SongLog>("", "", static_cast<unsigned short>(0), 0U);
}

bool AddNewSongLog(CL::ChangeLog& log, std::shared_ptr<CL::SongLog> song) {
  if (log.song_logs().count(song->song_number) != 0) return false;
  log.AddSongLog(std::move(song));
  return true;
}

void CheckWritable(const CL::ChangeLog& log) {
  for (const auto& [number, song] : log.song_logs()) {
    if (song->song_number == number) continue;
    throw std::logic_error(kit::format("Song %s cannot be written: its number was changed to %s",
                                       Quote(number).c_str(), Quote(song->song_number).c_str()));
  }
}

}  // namespace zuna_core
