// Any bytes given as a MIDI file are refused or read; what was read is written again as a file that reads
// back equal, and its song comes through export and import unchanged.

#include <cstddef>
#include <cstdint>
#include <stdexcept>

#include "fuzz/target.h"
#include "toolkit/midi/songs.h"
#include "toolkit/smf/file.h"

namespace {

using zuna_toolkit::midi::Report;
using zuna_toolkit::smf::File;

File ReadText(const std::string& bytes) {
  zuna_toolkit::smf::ReadNotes notes;
  return zuna_toolkit::smf::Read({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}, notes);
}

void CheckWriter(File file) {
  for (auto& track : file.tracks) track.sysex_count = 0;
  std::string bytes;
  try {
    bytes = zuna_toolkit::smf::Write(file);
  } catch (const std::length_error&) {
    return;  // Without system-exclusive messages two events can stand too far apart.
  }
  const File again = ReadText(bytes);
  const bool same = again.format == file.format && again.division == file.division;
  fuzz::Require(same && again.tracks == file.tracks,
                "a file that was read is written as one that reads the same");
}

std::size_t MessageCount(const zuna_midi::SongData& song) {
  std::size_t count = 0;
  for (const auto& [number, voice] : song.voice_data->tracks()) count += voice->messages.size();
  return count;
}

void CheckSong(const File& file) {
  Report report;
  const auto song = zuna_toolkit::midi::ImportSong(file, "1", "fuzz", report);
  const File exported = ReadText(zuna_toolkit::smf::Write(zuna_toolkit::midi::ExportSong(*song, report)));
  const auto again = zuna_toolkit::midi::ImportSong(exported, "1", "fuzz", report);
  if (MessageCount(*again) != MessageCount(*song)) return;  // Some stood too far apart in their voice.
  for (const auto& [number, voice] : song->voice_data->tracks()) {
    fuzz::Require(again->voice_data->GetTrack(number)->messages == voice->messages,
                  "a voice comes through export and import unchanged");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    zuna_toolkit::smf::ReadNotes notes;
    const File file = zuna_toolkit::smf::Read({data, size}, notes);
    CheckWriter(file);
    CheckSong(file);
  } catch (const zuna_toolkit::Error&) {
    return 0;
  }
  return 0;
}
