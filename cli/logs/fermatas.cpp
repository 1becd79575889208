#include "cli/logs/fermatas.h"

#include <algorithm>

namespace zuna_cli {

namespace {

bool IsSame(const CL::Fermata& a, const CL::Fermata& b) {
  return a.start == b.start && a.end == b.end && a.value_bits == b.value_bits && a.label == b.label;
}

void Compare(const CL::SongLog& source, const CL::SongLog& destination, FermataCopy& copy) {
  const auto& ours = source.fermatas->events;
  const auto& theirs = destination.fermatas->events;
  copy.fermatas += ours.size();
  if (source.attacca != 0) ++copy.attaccas;
  if (!ours.empty() || source.attacca != 0) ++copy.songs;
  if (!std::equal(ours.begin(), ours.end(), theirs.begin(), theirs.end(), IsSame)) {
    copy.replaced_fermatas += theirs.size();
  }
  if (destination.attacca != 0 && destination.attacca != source.attacca) ++copy.replaced_attaccas;
}

}  // namespace

FermataCopy CompareFermatas(const CL::ChangeLog& source, const CL::ChangeLog& destination) {
  FermataCopy copy;
  for (const auto& [number, song] : source.song_logs()) {
    const auto found = destination.song_logs().find(number);
    if (found == destination.song_logs().end()) {
      copy.missing_songs += (copy.missing_songs.empty() ? "" : ", ") + number;
    } else {
      Compare(*song, *found->second, copy);
    }
  }
  return copy;
}

}  // namespace zuna_cli
