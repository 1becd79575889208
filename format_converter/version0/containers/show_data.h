#pragma once

#include <iosfwd>
#include <map>
#include <string>

#include "format_converter/version0/containers/song_data.h"
#include "kit/api.h"
#include "kit/numeric_string_compare.h"

namespace zuna_midi {
class ShowData;
}

namespace version0 {

/// The whole content of a legacy show file: its songs by song number.
struct ZUNA_API ShowData {
  /// The songs by number, in the order of song numbers.
  std::map<std::string, SongData, kit::NumericStringCompare> songs;

  ShowData() = default;

  /// Reads a show. Sets the stream's exception mask to fail and bad and leaves it so: a short read throws
  /// std::ios_base::failure. Of two songs with one number the later one stays.
  explicit ShowData(std::istream& is);

  /// The legacy form of a current show. Throws what the conversion of a song throws.
  explicit ShowData(const zuna_midi::ShowData& show);

  /// The current form of this show, without a show name: no legacy show file holds one.
  zuna_midi::ShowData get_version_1_0() const;

  /// Throws what writing a song throws; what stands before it has been written.
  void write_binary(std::ostream& os) const;
};

/// True when the songs are equal. Never false: throws Version0Error naming the first difference. Songs that
/// `b` has beyond those of `a` do not count.
ZUNA_API bool operator==(const ShowData& a, const ShowData& b);
/// False, or the exception of operator==.
ZUNA_API bool operator!=(const ShowData& a, const ShowData& b);

}  // namespace version0
