#pragma once

// A legacy show: docs/format-0.md, "show_data".
// Its conversions are in conversions/show_conversion.cpp.

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
  /// The songs by number, in numeric order: "2" comes before "10".
  std::map<std::string, SongData, kit::NumericStringCompare> songs;

  ShowData() = default;

  /// Reads a show. Sets the stream's exception mask to fail and bad and leaves it set, so that a short read
  /// throws std::ios_base::failure. Of two songs with the same number the later one is kept.
  explicit ShowData(std::istream& is);

  /// Converts a current show. Throws what the conversion of a song throws.
  explicit ShowData(const zuna_midi::ShowData& show);

  /// Converts this show to the current model. The show name stays empty, because a legacy show has none.
  zuna_midi::ShowData get_version_1_0() const;

  /// Throws what writing a song throws; the songs before it have been written.
  void write_binary(std::ostream& os) const;
};

/// `==` is true when the songs are equal, and otherwise throws Version0Error with the first difference. `!=`
/// is its negation and throws the same. Additional songs of `b` are ignored.
///@{
ZUNA_API bool operator==(const ShowData& a, const ShowData& b);
ZUNA_API bool operator!=(const ShowData& a, const ShowData& b);
///@}

}  // namespace version0
