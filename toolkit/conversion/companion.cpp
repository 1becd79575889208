// Companions: what they tell, and whether they belong.
#include "toolkit/conversion/companion.h"

#include <algorithm>

#include "toolkit/document/internal/complete_songs.h"
#include "toolkit/document/internal/content.h"
#include "toolkit/error.h"

namespace zuna_toolkit {

namespace {

void AddSongs(const LegacyShow& legacy, Companion& companion) {
  for (const auto& [number, song] : legacy.show.songs) {
    companion.songs[number] = {song.song_name, song.division, song.song_length};
  }
}

void AddSongs(const LegacyLog& legacy, Companion& companion) {
  companion.show_name = legacy.log.show_name;
  for (const auto& [number, song] : legacy.log.songs) {
    companion.songs[number] = {song.songName_, std::nullopt, song.songLength_};
  }
}

void AddSongs(const zuna_midi::ShowData& show, Companion& companion) {
  companion.show_name = show.show_name;
  for (const auto& [number, song] : show.songs()) {
    companion.songs[number] = {song->song_name, song->division, song->song_length};
  }
}

void AddSongs(const CL::ChangeLog& log, Companion& companion) {
  companion.show_name = log.show_name;
  for (const auto& [number, song] : log.song_logs()) {
    companion.songs[number] = {song->song_name, song->division, song->song_length};
  }
}

/// Whether `companion` has the division of every song of a log.
bool HasDivisions(const Companion& log, const Companion& companion) {
  return std::all_of(log.songs.begin(), log.songs.end(), [&](const auto& song) {
    const auto found = companion.songs.find(song.first);
    return found != companion.songs.end() && found->second.division == song.second.division;
  });
}

}  // namespace

Companion CompanionFrom(const Document& document) {
  RequireCompleteSongs(document);
  Companion companion;
  companion.name = document.name();
  std::visit([&](const auto& model) { AddSongs(model, companion); }, document.model());
  return companion;
}

Companion ReadCompanion(OpenedFile& file, cmn::FileKind kind) {
  if (TypeByMark(file).kind != kind) return CompanionFrom(ReadDocument(file));
  const FileType type = Detect(file);  // What is no show at all has no mark either.
  throw Error(ErrorCode::kWrongCompanion, file.name(),
              "is " + TypeText(type) + (type.is_log() ? ", no show" : ", no log"),
              type.is_log() ? "give the show of the log" : "give the log of the show");
}

CompanionFit FitOf(const Document& document, const Companion& companion) {
  CompanionFit fit;
  bool one_agrees = false;
  const Companion own = CompanionFrom(document);
  for (const auto& [number, song] : own.songs) {
    const auto found = companion.songs.find(number);
    if (found == companion.songs.end()) {
      fit.unknown_songs.push_back(number);
      continue;
    }
    const Companion::Song& other = found->second;
    one_agrees = one_agrees || song.name == other.name;
    if (song.name == other.name && song.length == other.length) continue;
    fit.other_songs.push_back({number, song.name, other.name, song.length, other.length});
  }
  const bool may_lack_songs = !document.type().is_log();  // A log holds the songs that were edited.
  fit.belongs = one_agrees || own.songs.empty() || (may_lack_songs && companion.songs.empty());
  fit.restores = fit.belongs && (document.type().is_log() ? HasDivisions(own, companion)
                                                          : own.show_name == companion.show_name);
  return fit;
}

}  // namespace zuna_toolkit
