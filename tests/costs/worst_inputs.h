// Files that take as much memory and text for each of their bytes as anything found so far: many records of
// the fewest bytes, lists in disorder, and names that grow when they are shown. The tests of costs read,
// convert and print all of them.

#pragma once

#include <string>
#include <vector>

#include "CL/change_log.h"
#include "format_converter/version0/containers/change_log.h"
#include "format_converter/version0/containers/show_data.h"
#include "zuna_midi/show_data.h"

namespace zuna_test {

/// A model, and what tests call it.
template <typename Model>
struct Named {
  std::string name;
  Model model;
};

/// Current shows. Most take some hundred thousand bytes in version 1.2.
std::vector<Named<zuna_midi::ShowData>> WorstShows();

/// Current shows that version 0.0 holds, and that lose much in it or come near to being refused.
std::vector<Named<zuna_midi::ShowData>> WorstShowsForDown();

/// Current logs. Version 0.0 holds all of them but those with a long text.
std::vector<Named<CL::ChangeLog>> WorstLogs();

/// Legacy shows and logs that lose much on the way up.
///@{
std::vector<Named<version0::ShowData>> WorstLegacyShows();
std::vector<Named<version0::ChangeLogV0>> WorstLegacyLogs();
///@}

/// The bytes of Standard MIDI Files.
std::vector<Named<std::string>> WorstMidiFiles();

/// The `i`th of the shortest texts that may be song numbers, all different and without digits.
std::string ShortNumber(unsigned i);

/// Every file that is made of the models above, in each version that holds it, decrypted. The name ends in
/// the version, or in ".mid".
std::vector<Named<std::string>> WorstFiles();

}  // namespace zuna_test
