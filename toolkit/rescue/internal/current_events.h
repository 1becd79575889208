// The events of the songs that came back of a show of a current version.
#pragma once

#include "toolkit/rescue/rescue.h"

namespace zuna_toolkit {

/// Tells of every song of a show of a current version whose events are not what a writer writes. It is whole
/// only where it is vouched for, so that it was written like that.
void JudgeEvents(Rescued& rescued);

}  // namespace zuna_toolkit
