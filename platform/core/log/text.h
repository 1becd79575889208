#pragma once

// The text form of a log (docs/format-2.md).

#include <iosfwd>
#include <string_view>

#include "CL/change_log.h"
#include "platform/core/bytes/buffered_output.h"

namespace zuna_core {

void WriteTextLog(std::ostream& os, const CL::ChangeLog& log);

/// `prefix` is what has been read from the stream already. Throws cmn::DataError,
/// cmn::UnsupportedVersionError.
CL::ChangeLog ReadTextLog(std::istream& is, std::string_view prefix);

/// Writes an event as an object of the text form: a CL::Marker, CL::Caesura or CL::TempoScale, or a
/// CL::PairedEvent of any other class.
template <typename Event>
void WriteTextEvent(BufferedOutput& output, const Event& event);

}  // namespace zuna_core
