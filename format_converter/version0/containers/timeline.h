#pragma once

// The timeline of a legacy song: docs/format-0.md, "timeline".
// Its conversions are in conversions/timeline_conversion.cpp.

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
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

/// The first four bytes of a legacy timeline.
inline constexpr std::string_view kTimelineMagic = "TLMN";

/// The legacy timeline of one song. The lists are in the order of the file. A conversion expects them in
/// ascending order of time.
struct ZUNA_API Timeline {
  std::string name;               ///< at most 255 bytes
  std::uint32_t song_length = 0;  ///< ticks

  /// The records by kind.
  ///@{
  std::vector<RTempo> tempos;
  std::vector<RBarsBeats> bars_beats;
  std::vector<RKey> keys;
  std::vector<RPageNum> page_nums;
  std::vector<RMeter> meters;
  ///@}

  Timeline() = default;

  /// Reads a timeline. Its sequences may be in any order, and a later sequence of a kind replaces an earlier
  /// one. Throws IDError when the stream does not continue with "TLMN", EventCodeError for a byte in the body
  /// that begins no sequence of a timeline.
  explicit Timeline(std::istream& is);

  /// Converts a current timeline, with `division` ticks per quarter note. Throws std::logic_error when the
  /// timeline has no meters or its first meter has no tempo, and std::length_error when its meters are in
  /// such disorder that it would get more than 4,096 tempos and more than twice the entries of its five
  /// lists.
  Timeline(const TL::Timeline& timeline, const std::string& song_name, unsigned length,
           unsigned short division);

  /// Converts this timeline to the current model, which has no name and length. Throws like the constructor
  /// above.
  std::shared_ptr<TL::Timeline> get_version_1_0(unsigned short division) const;

  /// Throws std::length_error for a name or label of 256 bytes or more; the fields before it have been
  /// written.
  void write_binary(std::ostream& os) const;
};

/// Whether name and length are equal, and every record of `a` equals the record of `b` at the same index.
/// Additional records of `b` are ignored.
///@{
ZUNA_API bool operator==(const Timeline& a, const Timeline& b);
ZUNA_API bool operator!=(const Timeline& a, const Timeline& b);
///@}

}  // namespace version0
