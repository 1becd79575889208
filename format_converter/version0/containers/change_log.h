#pragma once

// A legacy change log: docs/format-0.md, "change_log".
// Its conversions are in conversions/log_conversion.cpp.

#include <cstdint>
#include <iosfwd>
#include <map>
#include <string>
#include <utility>

#include "format_converter/version0/containers/song_log.h"
#include "kit/api.h"
#include "kit/uuid.h"

namespace CL {
class ChangeLog;
}

namespace version0 {

/// The whole content of a legacy log file.
struct ZUNA_API ChangeLogV0 {
  kit::UUID identifier = kit::UUID::Nil();               ///< of this log
  std::string log_label;                                 ///< carried unchanged
  std::string show_name;                                 ///< the show that the log belongs to
  std::pair<std::uint16_t, std::uint16_t> log_tag_pair;  ///< carried unchanged
  /// By song number in byte order: "10" comes before "2". The songs of a legacy show are in numeric order
  /// instead.
  std::map<std::string, SongLogV0> songs;

  ChangeLogV0() = default;

  /// Reads a log. Sets the stream's exception mask to fail and bad and leaves it set, so that a short read
  /// throws std::ios_base::failure. Throws IDError when the stream does not continue with "ZUNA", and what
  /// reading a song log throws. Reads at least one song log. Of two with the same number the later one is
  /// kept.
  explicit ChangeLogV0(std::istream& is);

  /// Converts a current log. Throws std::logic_error when one of its song logs or a list is null.
  explicit ChangeLogV0(const CL::ChangeLog& log);

  /// Converts this log to the current model.
  CL::ChangeLog get_version_1_0() const;

  /// Throws std::length_error for a text of 256 bytes or more; the fields before it have been written.
  void write_binary(std::ostream& os) const;
};

/// Whether header and song logs are equal. Additional song logs of `b` are ignored.
///@{
ZUNA_API bool operator==(const ChangeLogV0& a, const ChangeLogV0& b);
ZUNA_API bool operator!=(const ChangeLogV0& a, const ChangeLogV0& b);
///@}

}  // namespace version0
