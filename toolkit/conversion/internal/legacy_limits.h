// What format 0.0 cannot hold and what keeps a song from being converted (docs/conversion.md).
#pragma once

#include <optional>
#include <string>

#include "format_converter/version0/containers/song_data.h"
#include "toolkit/document/document.h"
#include "toolkit/error.h"
#include "zuna_midi/song_data.h"

namespace zuna_toolkit {

/// What keeps a song from being converted.
struct Obstacle {
  std::string problem;
  std::string remedy;
  ErrorCode code = ErrorCode::kCannotBeConverted;
};

/// `obstacle` of the song with this number in `file`, as an error.
Error SongError(const std::string& file, const std::string& number, const Obstacle& obstacle);

/// Throws Error (kBadInput) for a current document that format 0.0 has no room for.
void RequireLegacyLimits(const Document& current);

/// What keeps a song from being brought down or up, where the conversion failed; nothing where it is not one
/// of the known obstacles.
std::optional<Obstacle> ObstacleDown(const zuna_midi::SongData& song);
std::optional<Obstacle> ObstacleUp(const version0::SongData& song);

}  // namespace zuna_toolkit
