#pragma once

#include <iosfwd>

#include "CL/change_log.h"
#include "platform/core/stream/output_window.h"

namespace zuna_core {

/// Writes a log as a text document of version 2.0 (docs/format-2.md).
void WriteTextLog(std::ostream& os, const CL::ChangeLog& log);

/// Writes an event as an object of that document: a CL::Marker, CL::Caesura or CL::TempoScale, or a
/// CL::PairedEvent of any other class.
template <class Event>
void WriteTextEvent(OutputWindow& window, const Event& event);

}  // namespace zuna_core
