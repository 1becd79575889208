// Copies attaccas and fermatas from one log to another.
#include "toolkit/conversion/copy_fermatas.h"

#include <algorithm>
#include <memory>
#include <string>

#include "toolkit/error.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

/// The log in `document`. `remedy` is for a log of version 0.0.
const CL::ChangeLog& RequireLog(const Document& document, const std::string& remedy) {
  if (!document.type().is_log()) {
    throw Error(ErrorCode::kWrongKind, document.name(), "is a show, and this command takes logs",
                "give a log");
  }
  if (document.type().is_legacy()) {
    throw Error(ErrorCode::kCurrentWanted, document.name(),
                "is a log of version 0.0, which holds no attaccas and fermatas", remedy);
  }
  return *document.As<CL::ChangeLog>();
}

void RequireSongs(const CL::ChangeLog& from, const CL::ChangeLog& to, const std::string& source,
                  const std::string& destination) {
  std::string missing;
  for (const auto& [number, song] : from.song_logs()) {
    if (!to.song_logs().contains(number)) AppendListed(missing, number);
  }
  if (missing.empty()) return;
  throw Error(ErrorCode::kSongsMissing, destination, "lacks songs of " + source + ": " + missing,
              "give a log of the same songs");
}

bool IsSameFermata(const CL::Fermata& a, const CL::Fermata& b) {
  return a.start == b.start && a.end == b.end && a.value_bits == b.value_bits && a.label == b.label;
}

void CountSong(const CL::SongLog& source, const CL::SongLog& destination, FermataCopy& copy) {
  const auto& ours = source.fermatas->events;
  const auto& theirs = destination.fermatas->events;
  copy.fermatas += ours.size();
  if (source.attacca != 0) ++copy.attaccas;
  if (!ours.empty() || source.attacca != 0) ++copy.songs;
  if (!std::equal(ours.begin(), ours.end(), theirs.begin(), theirs.end(), IsSameFermata)) {
    copy.replaced_fermatas += theirs.size();
  }
  if (destination.attacca != 0 && destination.attacca != source.attacca) ++copy.replaced_attaccas;
}

}  // namespace

FermataCopy CopyFermatas(const Document& source, const Document& destination) {
  const CL::ChangeLog& from = RequireLog(source, "give the log from before it went down");
  CL::ChangeLog to = RequireLog(destination, "use up first");
  RequireSongs(from, to, source.name(), destination.name());
  FermataCopy copy{destination};
  for (const auto& [number, song] : from.song_logs()) {
    CountSong(*song, *to.GetSongLog(number), copy);
    // The songs of `to` are those of the destination, which stays as it is.
    const auto changed = std::make_shared<CL::SongLog>(*to.GetSongLog(number));
    changed->attacca = song->attacca;
    changed->fermatas = std::make_shared<CL::EventList<CL::Fermata>>(*song->fermatas);
    to.AddSongLog(changed);
  }
  copy.document = Document(std::move(to), destination.type().version, destination.name());
  return copy;
}

}  // namespace zuna_toolkit
