// The events of the songs that came back of a show of a current version.
#pragma once

#include "toolkit/rescue/rescue.h"

namespace zuna_toolkit {

/// Tells of every song of a show of a current version whose events are not what a writer writes. It is whole
/// no more, and nothing vouches for it.
void JudgeEvents(Rescued& rescued);

}  // namespace zuna_toolkit
