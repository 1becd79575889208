// What the picture of a song shows, as tables: for those who cannot see it, and to copy from.
#pragma once

#include <cstddef>
#include <string>

#include "toolkit/view/internal/drawing.h"

namespace zuna_toolkit {

/// Each is collapsed at first. Empty where the song has nothing of the kind.
///@{
std::string EditTable(const ViewedSong& song);
std::string TimelineTable(const ViewedSong& song);
std::string VoiceTable(const ViewedSong& song);
///@}

/// "<p>12 more edits are not shown.</p>"; empty for none.
std::string MoreText(std::size_t more, const std::string& one, const std::string& many);

}  // namespace zuna_toolkit
