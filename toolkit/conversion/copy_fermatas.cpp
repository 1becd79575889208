// Copies attaccas and fermatas from one log to another.
#include "toolkit/conversion/copy_fermatas.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "toolkit/document/internal/complete_songs.h"
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

using Fermatas = std::vector<const CL::Fermata*>;

bool IsBefore(const CL::Fermata* a, const CL::Fermata* b) {
  return std::tie(a->start, a->end, a->value_bits, a->label) <
         std::tie(b->start, b->end, b->value_bits, b->label);
}

/// All fermatas of a song, so that equal ones stand together.
Fermatas Sorted(const CL::SongLog& song) {
  Fermatas sorted;
  sorted.reserve(song.fermatas->events.size());
  for (const CL::Fermata& fermata : song.fermatas->events) sorted.push_back(&fermata);
  std::sort(sorted.begin(), sorted.end(), IsBefore);
  return sorted;
}

/// How many fermatas of `destination` are not in `source`.
std::size_t CountErased(const CL::SongLog& source, const CL::SongLog& destination) {
  const Fermatas ours = Sorted(source);
  const Fermatas theirs = Sorted(destination);
  Fermatas erased;
  std::set_difference(theirs.begin(), theirs.end(), ours.begin(), ours.end(), std::back_inserter(erased),
                      IsBefore);
  return erased.size();
}

void CountSong(const CL::SongLog& source, const CL::SongLog& destination, FermataCopy& copy) {
  const std::size_t fermatas = source.fermatas->events.size();
  copy.fermatas += fermatas;
  if (source.attacca != 0) ++copy.attaccas;
  if (fermatas > 0 || source.attacca != 0) ++copy.songs;
  const std::size_t erased = CountErased(source, destination);
  const bool erases_attacca = destination.attacca != 0 && destination.attacca != source.attacca;
  copy.erased_fermatas += erased;
  copy.erased_attaccas += erases_attacca ? 1U : 0U;
  if (erased > 0 || erases_attacca) copy.erased_in.push_back(destination.song_number);
}

}  // namespace

FermataCopy CopyFermatas(const Document& source, const Document& destination) {
  const CL::ChangeLog& from = RequireLog(source, "give the log from before it went down");
  CL::ChangeLog to = RequireLog(destination, "use up first");
  RequireCompleteSongs(source);
  RequireCompleteSongs(destination);
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
