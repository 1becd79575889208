// Songs that a program built without one of their parts.
#pragma once

#include "CL/song_log.h"
#include "toolkit/document/document.h"
#include "zuna_midi/song_data.h"

namespace zuna_toolkit {

/// Whether a song is there with its timeline and its voices, or with all its lists of edits.
///@{
bool IsComplete(const zuna_midi::SongData* song);
bool IsComplete(const CL::SongLog* song);
///@}

/// Throws Error (kIncompleteSong) where a song of `document` is not complete. No file holds such a song.
void RequireCompleteSongs(const Document& document);

}  // namespace zuna_toolkit
