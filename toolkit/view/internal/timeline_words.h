// What people call the entries of a timeline.
#pragma once

#include <string>

#include "TL/timeline.h"

namespace zuna_toolkit {

/// Quarter notes a minute, in tenths; 0 where a quarter note takes no time.
long long TenthsOfBpm(const TL::Tempo& tempo);

/// "120" or "109.5": quarter notes a minute
std::string TempoText(const TL::Tempo& tempo);

/// "3/4"
std::string MeterText(const TL::Meter& meter);

/// "G major"; of more sharps or flats than keys have, their number.
std::string KeyText(const TL::Key& key);

/// "p. 12"
std::string PageText(const TL::PageNumber& page);

}  // namespace zuna_toolkit
