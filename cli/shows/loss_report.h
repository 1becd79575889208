#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "format_converter/version0/show_data.h"
#include "zuna_midi/show_data.h"

namespace zuna_cli {

/// One kind of thing that a conversion changes or drops.
struct Loss {
  std::string one;        ///< what it is called: "voice number"
  std::string many;       ///< and when there are more of it: "voice numbers"
  std::size_t count = 0;  ///< how many
  std::string first;      ///< the first of them: "song 1: voice 12 becomes voice 2"

  bool operator==(const Loss&) const = default;
};

/// What `show` loses in `legacy`, its form in format 0.0: found by comparing it with what comes back up from
/// there. Throws what that conversion throws.
std::vector<Loss> DownLosses(const zuna_midi::ShowData& show, const version0::ShowData& legacy);

/// "3 voice numbers (song 1: voice 12 becomes voice 2)"
std::string LossText(const Loss& loss);

}  // namespace zuna_cli
