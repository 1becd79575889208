#include <utility>

#include "CL/change_log.h"
#include "format_converter/version0/change_log.h"

namespace version0 {

CL::ChangeLog ChangeLogV0::get_version_1_0() const {
  CL::ChangeLog log;
  log.show_name = show_name;
  log.log_label = log_label;
  log.identifier = identifier;
  log.log_tag_pair = log_tag_pair;
  for (const auto& [number, song] : songs) log.AddSongLog(song.get_version_1_0());
  return log;
}

ChangeLogV0::ChangeLogV0(const CL::ChangeLog& log)
    : identifier(log.identifier),
      log_label(log.log_label),
      show_name(log.show_name),
      log_tag_pair(log.log_tag_pair) {
  for (const auto& [key, source] : log.song_logs()) {
    SongLogV0 song(*source);
    const std::string number = song.songNumber_;
    songs.insert_or_assign(number, std::move(song));
  }
}

}  // namespace version0
