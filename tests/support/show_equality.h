// Where two current shows differ.

#pragma once

#include <string>

#include "zuna_midi/show_data.h"

namespace zuna_test {

/// The first difference between two shows in everything that they hold, as in: song "2", voice 3, message 17.
/// Empty where there is none.
std::string FirstDifference(const zuna_midi::ShowData& a, const zuna_midi::ShowData& b);

}  // namespace zuna_test
