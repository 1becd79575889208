#pragma once

// Where the click of a timeline changes: docs/conversion.md.

#include "kit/api.h"

namespace TL {
struct Meter;
}

namespace version0 {

struct RTempo;

// In the legacy format the tempo carries the metronome click, in the current model the meter does. These
// functions tell whether a change of the click needs a new entry. They compare clicks and notated 32nds per
// quarter note exactly.

/// Whether the click of `tempo` needs a current meter other than `meter`.
ZUNA_API bool need_new_meter(const TL::Meter& meter, const RTempo& tempo);

/// Whether the click of `meter` needs a legacy tempo other than `tempo`.
ZUNA_API bool need_new_tempo(const RTempo& tempo, const TL::Meter& meter);

}  // namespace version0
