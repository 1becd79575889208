// Any bytes given as a MIDI file are refused or read; what was read is written again as a file that reads
// back equal, and its song comes through export and import unchanged.

#include <cstddef>
#include <cstdint>
#include <stdexcept>

#include "fuzz/cost.h"
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

void RequireShortReport(const Report& report, std::size_t size) {
  std::size_t printed = report.not_kept.ToString().size();
  for (const std::string& remark : report.remarks) printed += remark.size() + 1;
  fuzz::RequireShort(printed, size);
}

void CheckSong(const File& file, std::size_t size) {
  Report report;
  const auto song = fuzz::Bounded("import of a song", size,
                                  [&] { return zuna_toolkit::midi::ImportSong(file, "1", "fuzz", report); });
  RequireShortReport(report, size);
  const File exported = ReadText(fuzz::Bounded("export of a song", size, [&] {
    return zuna_toolkit::smf::Write(zuna_toolkit::midi::ExportSong(*song, report));
  }));
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
    const File file = fuzz::Bounded("reading a MIDI file", size, [&] {
      return zuna_toolkit::smf::Read({data, size}, notes);
    });
    CheckWriter(file);
    CheckSong(file, size);
  } catch (const zuna_toolkit::Error&) {
    return 0;
  }
  return 0;
}
