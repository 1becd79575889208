#pragma once

// The version of a show or log file.

#include <compare>
#include <cstdint>

namespace cmn {

/// The version of a file format: 0.0 is the legacy format, 1.0 and above are current. Ordered by major, then
/// by minor number.
struct FileVersion {
  std::uint8_t major = 0;  ///< compared first
  std::uint8_t minor = 0;  ///< compared among versions of one major number

  /// By major, then by minor number.
  auto operator<=>(const FileVersion&) const = default;  // NOLINT(modernize-use-nullptr): the 0 of a < b
};

/// The first byte of the text form of a show or log. A legacy show of 123 songs begins with it too.
inline constexpr char kTextFormStart = '{';

}  // namespace cmn
