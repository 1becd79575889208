// Files that are certainly no show and no log.
#pragma once

#include <string_view>

namespace zuna_toolkit {

/// Throws Error (kMidiFile, kArchive) without a file where `bytes` begin like a MIDI file or an archive.
void RequireNoOtherFormat(std::string_view bytes);

}  // namespace zuna_toolkit
