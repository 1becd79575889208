#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "format_converter/version0/records/r_bars_beats.h"
#include "format_converter/version0/records/r_key.h"
#include "format_converter/version0/records/r_meter.h"
#include "format_converter/version0/records/r_page_num.h"
#include "format_converter/version0/records/r_tempo.h"
#include "kit/api.h"

namespace TL {
struct Timeline;
}

namespace version0 {

/// The legacy timeline of one song. The lists stand as they were read; conversion expects them in ascending
/// order of time.
struct ZUNA_API Timeline {
  std::string name;               ///< at most 255 bytes
  std::uint32_t song_length = 0;  ///< ticks

  /// As they stand in the file.
  ///@{
  std::vector<RTempo> tempos;
  std::vector<RBarsBeats> bars_beats;
  std::vector<RKey> keys;
  std::vector<RPageNum> page_nums;
  std::vector<RMeter> meters;
  ///@}

  Timeline() = default;

  /// Reads a timeline, its sequences in any order; a later sequence of a kind replaces an earlier one.
  /// Throws IDError where the stream does not go on with "TLMN", EventCodeError where something else than a
  /// sequence of the timeline stands in its body.
  explicit Timeline(std::istream& is);

  /// The legacy form of a current timeline, for `division` ticks in a quarter note.
  /// Throws std::logic_error for a timeline without meters, whose first meter has no tempo, or whose meters
  /// stand in such disorder that they would repeat its tempos without end (std::length_error).
  Timeline(const TL::Timeline& timeline, const std::string& song_name, unsigned length,
           unsigned short division);

  /// The current form of this timeline; its lists must be in ascending order of time. Name and length are not
  /// part of it. Throws std::logic_error like the constructor above.
  std::shared_ptr<TL::Timeline> get_version_1_0(unsigned short division) const;

  /// Throws std::length_error for a name or label of 256 bytes or more; what stands before it has been
  /// written.
  void write_binary(std::ostream& os) const;
};

/// Whether name and length are equal, and every record of `a` equals the one at its place in `b`. Records
/// that `b` has beyond those of `a` do not count.
ZUNA_API bool operator==(const Timeline& a, const Timeline& b);
/// The opposite of operator==.
ZUNA_API bool operator!=(const Timeline& a, const Timeline& b);

}  // namespace version0
