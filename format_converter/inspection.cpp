// Prints what shows and logs hold.

#include "format_converter/inspection.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <system_error>

#include "CL/change_log.h"
#include "format_converter/errors.h"
#include "format_converter/file_version.h"
#include "format_converter/internal/streams.h"
#include "format_converter/internal/version_text.h"
#include "format_converter/version0/containers/change_log.h"
#include "format_converter/version0/primitives/stream_position.h"
#include "kit/path.h"
#include "zuna_midi/show_data.h"

namespace {

using zuna_converter::version_text;

bool is_program_change(const std_midi::VoiceMessage& message) { return (message.status & 0xF0) == 0xC0; }

/// Opening one of these may wait for another program, or do something to a device.
bool is_pipe_or_device(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_other(std::filesystem::status(path, ignored));
}

void print_program_changes(const zuna_midi::VoiceTrack& voice) {
  std::cout << "  " << voice.name << ":" << std::endl;
  for (const auto& [time, message] : voice.messages) {
    if (!is_program_change(message)) continue;
    std::cout << "    " << std::to_string(time) << ": ";
    message.WriteString(std::cout);
    std::cout << std::endl;
  }
}

}  // namespace

void filter_showdata_by_version(const std::string& dir, const cmn::FileVersion& lo,
                                const cmn::FileVersion& hi) {
  std::cout << "Showing files matching " << version_text(lo) << " <= FileVersion < " << version_text(hi)
            << std::endl;
  for (const std::string& name : kit::listdir(dir)) {
    if (kit::path::extension(name) != ".showdata") continue;
    const std::string path = kit::path::Join(dir, name);
    if (is_pipe_or_device(path)) continue;
    const cmn::FileVersion version = GetShowdataFileVersion(path);
    if (lo <= version && version < hi) std::cout << name << ": " << version_text(version) << std::endl;
  }
}

void PrintProgramChanges(const std::string& path) {
  std::ifstream file;
  zuna_converter::open_to_read(file, path);
  if (!file.good())
    throw FormatConverterIOError(zuna_converter::shown_path(path) +
                                 " does not appear to be a valid input file.");
  const zuna_midi::ShowData show(file);
  for (const auto& [number, song] : show.songs()) {
    std::cout << "Song " << number << ": " << song->song_name << ":" << std::endl;
    for (const auto& [track_number, voice] : song->voice_data->tracks()) print_program_changes(*voice);
  }
}

void print_string(const std::string& s) {
  std::cout.write(s.data(), static_cast<std::streamsize>(s.size())) << std::endl;
}

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
  const std::string key(song);
  const std::shared_ptr<const CL::SongLog> song_log = log.GetSongLog(key);
  if (!song_log) throw std::logic_error("A change log without the song log " + key + " cannot be printed");
  song_log->WriteStringDetailed(std::cout, 0);
}
