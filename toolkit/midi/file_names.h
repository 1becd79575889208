// Names for the MIDI files of a show.
#pragma once

#include <map>
#include <set>
#include <string>

#include "kit/api.h"

namespace zuna_toolkit::midi {

/// Names the MIDI files of one folder: "NUMBER NAME.mid", without control and bidirectional characters and
/// the characters / \ : ? * " < > | (not every system takes them), never with "-" or "." in front, never a
/// name that Windows keeps for a device (such as CON, NUL or COM1), at most 255 bytes long and never two
/// alike, upper and lower case not told apart.
class ZUNA_API FileNames {
 public:
  /// The name for a song; another one on every call.
  std::string Make(const std::string& song_number, const std::string& song_name);

 private:
  std::set<std::string> taken_;      ///< in lower case
  std::map<std::string, int> next_;  ///< the suffix to try next, by what stands before it in lower case
};

}  // namespace zuna_toolkit::midi
