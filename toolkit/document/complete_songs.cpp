// Songs that a program built without one of their parts.
#include "toolkit/document/internal/complete_songs.h"

#include <string>
#include <utility>

#include "toolkit/error.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

template <typename Songs>
void RequireComplete(const Songs& songs, const std::string& name) {
  for (const auto& [number, song] : songs) {
    if (IsComplete(song.get())) continue;
    ErrorParts parts;
    parts.file = name;
    parts.problem = "song " + NumberText(number) + " lacks a part";
    parts.remedy = "give every song all its lists";
    parts.song = number;
    throw Error(ErrorCode::kIncompleteSong, std::move(parts));
  }
}

}  // namespace

bool IsComplete(const zuna_midi::SongData* song) {
  return song != nullptr && song->timeline && song->voice_data;
}

bool IsComplete(const CL::SongLog* song) {
  return song != nullptr && song->vamps && song->repeats && song->cuts && song->transposes &&
         song->tempo_scales && song->clicks && song->fermatas && song->markers && song->caesuras;
}

void RequireCompleteSongs(const Document& document) {
  if (const auto* show = document.As<zuna_midi::ShowData>()) RequireComplete(show->songs(), document.name());
  if (const auto* log = document.As<CL::ChangeLog>()) RequireComplete(log->song_logs(), document.name());
}

}  // namespace zuna_toolkit
