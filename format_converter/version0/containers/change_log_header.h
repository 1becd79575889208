#pragma once

// The header of a legacy change log: docs/format-0.md, "change_log_header".

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

#include "kit/api.h"
#include "kit/uuid.h"

namespace version0 {

/// The first four bytes of a legacy change log.
inline constexpr std::string_view kChangeLogMagic = "ZUNA";

/// The header of a legacy change log.
struct ZUNA_API ChangeLogHeader {
  kit::UUID identifier = kit::UUID::Nil();  ///< of the log
  std::string log_label;                    ///< as in ChangeLogV0
  std::string show_name;                    ///< the show that the log belongs to
  std::uint32_t log_tag_pair = 0;           ///< two 16-bit halves, the first in the low one
  std::uint32_t end_position = 0;           ///< the stream position at which the song logs end

  /// Reads a header. Throws IDError when the stream does not continue with "ZUNA", std::length_error when it
  /// ends before a string.
  explicit ChangeLogHeader(std::istream& is);
};

/// Reads a header and returns its show name. Leaves the read position after the header.
ZUNA_API std::string get_show_name(std::istream& is);

}  // namespace version0
