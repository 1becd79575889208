#pragma once

#include <iosfwd>
#include <string>

#include "cmn/zuna_event.h"

namespace zuna_core {

/// Writes what an event is for a person: its name, `values` in parentheses, and its label if it has one.
void WriteEventText(std::ostream& os, const cmn::ZunaEvent& event, const std::string& values);

}  // namespace zuna_core
