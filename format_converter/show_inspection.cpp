#include "format_converter/show_inspection.h"

#include <fstream>
#include <iostream>

#include "format_converter/errors.h"
#include "format_converter/file_version.h"
#include "kit/format.h"
#include "kit/listdir.h"
#include "kit/path.h"
#include "zuna_midi/show_data.h"

namespace {

std::string version_text(const cmn::FileVersion& version) {
  return kit::format("%u.%u", version.major, version.minor);
}

bool is_program_change(const std_midi::VoiceMessage& message) { return (message.status & 0xF0) == 0xC0; }

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
    const cmn::FileVersion version = GetShowdataFileVersion(kit::path::Join(dir, name));
    if (lo <= version && version < hi) std::cout << name << ": " << version_text(version) << std::endl;
  }
}

void PrintProgramChanges(const std::string& path) {
  std::ifstream file(path, std::ios_base::in | std::ios_base::binary);
  if (!file.good()) throw FormatConverterIOError(path + " does not appear to be a valid input file.");
  const zuna_midi::ShowData show(file);
  for (const auto& [number, song] : show.songs()) {
    std::cout << "Song " << number << ": " << song->song_name << ":" << std::endl;
    for (const auto& [track_number, voice] : song->voice_data->tracks()) print_program_changes(*voice);
  }
}
