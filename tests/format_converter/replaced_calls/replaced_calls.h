#pragma once

// What the converter calls in other libraries, replaced by functions of the test's own. With them a test
// shows what the converter does with results that our own libraries never give.

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
  /// Whether closing a file fails, as it does on a full network drive.
  bool close_fails = false;

  Calls();
  Calls(const Calls&) = delete;
  Calls& operator=(const Calls&) = delete;
  ~Calls();
};

// The accessors of events give the members, changed so: a caller that uses the members instead is found out.
inline constexpr int kStartOffset = 1000;
inline constexpr int kEndOffset = 2000;
inline constexpr int kIntOffset = 5;
inline constexpr float kFloatFactor = 4;
inline constexpr int kPositionOffset = 3000;

}  // namespace replaced_calls
