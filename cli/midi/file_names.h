#pragma once

#include <set>
#include <string>

namespace zuna_cli::midi {

/// Names the MIDI files of one folder: "NUMBER NAME.mid", without control characters and the characters
/// / \ : ? * " < > | (not every system takes them), at most 255 bytes long and never two alike, upper and
/// lower case not told apart.
class FileNames {
 public:
  std::string Make(const std::string& song_number, const std::string& song_name);

 private:
  std::set<std::string> taken_;  ///< in lower case
};

}  // namespace zuna_cli::midi
