// Reads, writes and compares a legacy show: docs/format-0.md, "show_data".

#include "format_converter/version0/containers/show_data.h"

#include <istream>
#include <ostream>
#include <utility>

#include "format_converter/version0/primitives/errors.h"
#include "format_converter/version0/primitives/internal/primitives.h"

namespace version0 {

ShowData::ShowData(std::istream& is) {
  is.exceptions(std::ios_base::failbit | std::ios_base::badbit);
  const unsigned count = get_u8(is);
  for (unsigned i = 0; i < count; ++i) {
    SongData song(is);
    SongData& entry = songs[song.song_number];
    entry = std::move(song);
  }
}

void ShowData::write_binary(std::ostream& os) const {
  put_u8(os, static_cast<std::uint8_t>(songs.size()));
  for (const auto& [number, song] : songs) song.write_binary(os);
}

bool operator==(const ShowData& a, const ShowData& b) {
  auto other = b.songs.begin();
  for (const auto& [number, song] : a.songs) {
    if (other == b.songs.end()) throw Version0Error("songs did not compare equal");
    static_cast<void>(song == other->second);
    ++other;
  }
  return true;
}

bool operator!=(const ShowData& a, const ShowData& b) { return !(a == b); }

}  // namespace version0
