// Reading and writing show files of every version (docs/format-1.md, docs/format-2.md).

#include <stdexcept>
#include <string>

#include "kit/format.h"
#include "platform/core/bytes/quote.h"
#include "platform/core/file/frame.h"
#include "platform/core/show/file.h"
#include "zuna_midi/show_data.h"
#include "zuna_midi/text_form.h"

namespace zuna_core {

namespace {

/// Throws std::logic_error for a song that no file can hold: without timeline or voices, or held under
/// another number than its own.
void CheckWritable(const std::string& number, const zuna_midi::SongData& song) {
  const auto refuse = [&number](const std::string& problem) {
    throw std::logic_error("Song " + Quote(number) + " cannot be written: " + problem);
  };
  if (song.song_number != number) refuse("its number was changed to " + Quote(song.song_number));
  if (!song.timeline) refuse("it has no timeline");
  if (!song.voice_data) refuse("it has no voice data");
  for (const auto& [track_number, track] : song.voice_data->tracks()) {
    if (track->track_number != track_number) {
      refuse(kit::format("the number of its voice %u was changed to %u", static_cast<unsigned>(track_number),
                         static_cast<unsigned>(track->track_number)));
    }
  }
}

void CheckWritable(const zuna_midi::ShowData& show, cmn::FileVersion version) {
  if (!cmn::IsSupported(FileKind::kShow, version)) ThrowUnsupported(FileKind::kShow, version, "for output");
  for (const auto& [number, song] : show.songs()) CheckWritable(number, *song);
}

void WriteShow(std::ostream& os, const zuna_midi::ShowData& show, cmn::FileVersion version) {
  CheckWritable(show, version);
  if (LayoutOf(version) == Layout::kText) {
    WriteTextShow(os, show, version);
  } else {
    WriteFrame(os, FileKind::kShow, version, [&](auto& sink) { EncodeShow(show, version, sink); });
  }
}

zuna_midi::ShowData ReadShow(std::istream& is) {
  const Preamble preamble = ReadPreamble(is, FileKind::kShow);
  if (!preamble.header) return ReadTextShow(is, preamble.bytes);
  return ReadFields(is, FileKind::kShow, preamble,
                    [&](ByteReader& in) { return DecodeShow(in, preamble.header->version); });
}

}  // namespace

}  // namespace zuna_core

namespace zuna_midi {

ShowData::ShowData(std::istream& is) : ShowData(zuna_core::ReadShow(is)) {}

void ShowData::WriteBinary(std::ostream& os, const cmn::FileVersion& version) const {
  zuna_core::WriteShow(os, *this, version);
}

void WriteTextForm(std::ostream& os, const ShowData& show, const cmn::FileVersion& stated) {
  zuna_core::CheckWritable(show, stated);
  zuna_core::WriteTextShow(os, show, stated);
}

}  // namespace zuna_midi
