#pragma once

// What the converter calls in other libraries, replaced by functions of the test's own. With them a test
// shows what the converter does with results that our own libraries never give.

#include <cstdint>
#include <functional>
#include <istream>
#include <string>
#include <vector>

#include "cmn/file_version.h"

namespace replaced_calls {

/// What stands in for the libraries' functions while this lives.
struct Calls {
  /// For both version probes. Unset: version 1.2.
  std::function<cmn::FileVersion(std::istream&)> probe;
  /// For kit::listdir. Unset: no names.
  std::function<std::vector<std::string>()> listdir;
  /// Called before CL::ChangeLog::GetSongLog looks for its song log.
  std::function<void()> before_song_log;
  /// Whether the accessors of events differ from their members, by what is stated below.
  bool accessors_differ = false;
  /// Whether closing a file fails, as it does on a full network drive.
  bool close_fails = false;

  Calls();
  Calls(const Calls&) = delete;
  Calls& operator=(const Calls&) = delete;
  ~Calls();
};

// What the accessors give beyond the members of an event, so that a caller that uses the members is noticed.
inline constexpr std::uint32_t kStartOffset = 1000;
inline constexpr std::uint32_t kEndOffset = 2000;
inline constexpr std::uint32_t kIntOffset = 5;
inline constexpr std::uint32_t kFloatOffset = 1 << 24;  // two more in the exponent: a factor of 4
inline constexpr std::uint32_t kPositionOffset = 3000;

}  // namespace replaced_calls
