#pragma once

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

  /// Reads a song-log record. Sets the stream's exception mask to fail and bad and leaves it so: a short read
  /// throws std::ios_base::failure. Throws EventCodeError for a sequence that no song log has, or a record of
  /// another sequence in one. Sequences may stand in any order; of two with one code the later one stays.
  explicit SongLogV0(std::istream& is);

  /// The legacy form of a current song log. Division, attacca, fermatas and labels are dropped, and so are
  /// caesuras whose second word is above 1; integers keep their low 8 bits. Throws std::logic_error for a
  /// song log that lacks a list.
  explicit SongLogV0(const CL::SongLog& log);

  /// The current form of this song log: division and attacca 0, empty labels.
  std::shared_ptr<CL::SongLog> get_version_1_0() const;

  /// Throws std::length_error for a text of 256 bytes or more; what stands before it has been written.
  void write_binary(std::ostream& os) const;

  /// Writes "SongLogV0(songNumber_=12, songName_=Tune, songLength_=1920)".
  std::ostream& write_string(std::ostream& os) const;

  /// Writes `indent` tab characters and write_string()'s line; then for each list, with one tab more, a line
  /// with the number of its events and, with two tabs more, a line for each event. Values are printed as
  /// signed 16-bit numbers: a tempo scale loses its fraction, and is 0 where it does not fit.
  void write_string_detailed(std::ostream& os, int indent) const;

  /// Whether number, name, length and all events of this log are those of `b`. Values of paired events do not
  /// count, nor does what `b` has beyond the end of a list of this one.
  bool operator==(const SongLogV0& b) const;
  /// The opposite of operator==.
  bool operator!=(const SongLogV0& b) const;
};

}  // namespace version0
