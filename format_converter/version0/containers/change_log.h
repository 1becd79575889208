#pragma once

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
  /// By song number in plain byte order, "10" before "2": unlike the songs of a legacy show, which stand in
  /// the order of their numbers.
  std::map<std::string, SongLogV0> songs;

  ChangeLogV0() = default;

  /// Reads a log. Sets the stream's exception mask to fail and bad and leaves it so: a short read throws
  /// std::ios_base::failure. Throws IDError where the stream does not go on with "ZUNA", and what reading a
  /// song log throws. There is always one song log at least; of two with one number the later one stays.
  explicit ChangeLogV0(std::istream& is);

  /// The legacy form of a current log.
  explicit ChangeLogV0(const CL::ChangeLog& log);

  /// The current form of this log.
  CL::ChangeLog get_version_1_0() const;

  /// Throws std::length_error for a text of 256 bytes or more; what stands before it has been written.
  void write_binary(std::ostream& os) const;
};

/// Whether header and song logs are equal. Song logs that `b` has beyond those of `a` do not count.
ZUNA_API bool operator==(const ChangeLogV0& a, const ChangeLogV0& b);
/// The opposite of operator==.
ZUNA_API bool operator!=(const ChangeLogV0& a, const ChangeLogV0& b);

}  // namespace version0
