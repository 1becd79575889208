#pragma once

#include "kit/api.h"

namespace TL {
struct Meter;
}

namespace version0 {

struct RTempo;

// A legacy tempo carries the metronome click; a current meter does. These tell where the one that stands last
// no longer holds, comparing clicks and 32nds to the quarter note exactly.

/// Whether the click of `tempo` needs another current meter than `meter`.
ZUNA_API bool need_new_meter(const TL::Meter& meter, const RTempo& tempo);

/// Whether the click of `meter` needs another legacy tempo than `tempo`.
ZUNA_API bool need_new_tempo(const RTempo& tempo, const TL::Meter& meter);

}  // namespace version0
