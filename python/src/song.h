// Songs and voices as Python has them.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "python/src/document.h"
#include "toolkit/document/summary.h"
#include "zuna_midi/song_data.h"

namespace zuna_python {

/// A song of a show or of a log.
struct Song {
  zuna_toolkit::SongSummary summary;
  std::shared_ptr<const zuna_midi::SongData> data;  ///< of a show, in the current form; null for a log
};

/// A voice of a song.
struct Voice {
  std::shared_ptr<const zuna_midi::VoiceTrack> track;
};

/// The songs of a document, in its order.
std::vector<Song> SongsOf(const Document& document);

/// `document` with these messages in place of those of a voice. Throws TypeError where the array has another
/// type than Voice.messages, KeyError for a song or voice that is not there, zuna_toolkit::Error for a legacy
/// document and for a log.
SharedDocument WithMessages(const Document& document, const py::str& song, std::uint16_t voice,
                            const py::object& messages);

}  // namespace zuna_python
