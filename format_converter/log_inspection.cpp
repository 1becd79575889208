#include "format_converter/log_inspection.h"

#include <iostream>

#include "CL/change_log.h"
#include "format_converter/version0/change_log.h"
#include "format_converter/version0/stream_position.h"

void print_string(const std::string& s) { std::cout << s << std::endl; }

void print_pos(std::istream& is) { version0::print_istream_pos(is); }

void print_songs(const CL::ChangeLog& log) {
  std::cout << "Song numbers for " << log.show_name << ": " << std::endl;
  for (const auto& [number, song_log] : log.song_logs()) std::cout << number << std::endl;
}

void print_events_v0(const version0::ChangeLogV0& log) {
  if (log.songs.empty()) return;
  log.songs.rbegin()->second.write_string_detailed(std::cout, 0);
}

void print_events_v1(const CL::ChangeLog& log, const char* song) {
  log.GetSongLog(std::string(song))->WriteStringDetailed(std::cout, 0);
  std::cout << std::flush;
}
