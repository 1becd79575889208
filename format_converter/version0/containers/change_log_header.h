#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

#include "kit/api.h"
#include "kit/uuid.h"

namespace version0 {

/// What a legacy change log begins with.
inline constexpr std::string_view kChangeLogMagic = "ZUNA";

/// The header of a legacy change log.
struct ZUNA_API ChangeLogHeader {
  kit::UUID identifier{kit::UUID::Bytes{}};  ///< of the log
  std::string log_label;                     ///< as in ChangeLogV0
  std::string show_name;                     ///< the show that the log belongs to
  std::uint32_t log_tag_pair = 0;            ///< two 16-bit halves, the first in the low one
  std::uint32_t end_position = 0;            ///< the stream position at which the song logs end

  /// Reads a header. Throws IDError where the stream does not go on with "ZUNA", std::length_error where it
  /// ends before a string.
  explicit ChangeLogHeader(std::istream& is);
};

/// The show name in the header that the stream goes on with; the stream is left after the header.
ZUNA_API std::string get_show_name(std::istream& is);

}  // namespace version0
