#pragma once

// A song log of a legacy change log: docs/format-0.md, "song_log".
// Its conversions are in conversions/log_conversion.cpp.

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "format_converter/version0/records/paired_event.h"
#include "format_converter/version0/records/x_caesura.h"
#include "format_converter/version0/records/x_score_marker.h"
#include "kit/api.h"

namespace CL {
class SongLog;
}

namespace version0 {

/// The edits of one song in a legacy log.
struct ZUNA_API SongLogV0 {
  std::string songNumber_;        ///< the key in a ChangeLogV0
  std::string songName_;          ///< the title
  std::uint32_t songLength_ = 0;  ///< ticks

  /// The edits by kind, in the order of the file.
  ///@{
  std::vector<CutV0> cuts;
  std::vector<VampV0> vamps;
  std::vector<RepeatV0> repeats;
  std::vector<ClickV0> clicks;
  std::vector<TempoScaleV0> tempo_scales;
  std::vector<TransposeV0> transposes;
  std::vector<XCaesura> caesuras;
  std::vector<XScoreMarker> score_markers;
  ///@}

  SongLogV0() = default;

  /// Reads a song-log record. Sets the stream's exception mask to fail and bad and leaves it set, so that a
  /// short read throws std::ios_base::failure. Throws EventCodeError for a byte that begins no sequence of a
  /// song log, and for a record of another sequence. Sequences may be in any order. Of two with the same code
  /// the later one is kept.
  explicit SongLogV0(std::istream& is);

  /// Converts a current song log. Division, attacca, fermatas and labels are dropped, and so are
  /// caesuras whose second word is above 1; integers keep their low 8 bits. Throws std::logic_error for a
  /// song log that lacks a list.
  explicit SongLogV0(const CL::SongLog& log);

  /// Converts this song log to the current model, with division and attacca 0 and empty labels.
  std::shared_ptr<CL::SongLog> get_version_1_0() const;

  /// Throws std::length_error for a text of 256 bytes or more; the fields before it have been written.
  void write_binary(std::ostream& os) const;

  /// Writes "SongLogV0(songNumber_=12, songName_=Tune, songLength_=1920)".
  std::ostream& write_string(std::ostream& os) const;

  /// Writes `indent` tab characters and the line of write_string(); then for each list, with one more tab, a
  /// line with the number of its events and, with two more tabs, a line for each event. Each line ends with a
  /// newline and a flush. Values are printed as signed 16-bit numbers: a tempo scale is truncated to a 32-bit
  /// integer, of which the low 16 bits are printed, or 0 where 32 bits cannot hold it.
  void write_string_detailed(std::ostream& os, int indent) const;

  /// Whether number, name, length and all events of this log equal those of `b`. Values of paired events and
  /// additional events of `b` are ignored.
  ///@{
  bool operator==(const SongLogV0& b) const;
  bool operator!=(const SongLogV0& b) const;
  ///@}
};

}  // namespace version0
