#pragma once

// The parts of reading and writing log files that file.cpp puts together: the body of a binary file
// (docs/format-1.md) and the text form (docs/format-2.md).

#include <iosfwd>
#include <string_view>

#include "CL/change_log.h"
#include "platform/core/bytes/byte_reader.h"
#include "platform/core/bytes/byte_writer.h"

namespace zuna_core {

/// The body of a binary file: its layout is that of the version. Decoding throws cmn::DataError.
///@{
void EncodeLog(const CL::ChangeLog& log, cmn::FileVersion version, ByteCounter& sink);
void EncodeLog(const CL::ChangeLog& log, cmn::FileVersion version, ByteWriter& sink);
CL::ChangeLog DecodeLog(ByteReader& in, cmn::FileVersion version);

/// An event as it is stored at the front of its list: a CL::Marker, CL::Caesura or CL::TempoScale, or a
/// CL::PairedEvent of any other class.
template <typename Event>
void EncodeEvent(const Event& event, cmn::FileVersion version, ByteWriter& sink);
///@}

/// The text form, which states this version.
void WriteTextLog(std::ostream& os, const CL::ChangeLog& log, cmn::FileVersion stated);

/// `prefix` is what has been read from the stream already. Throws cmn::DataError,
/// cmn::UnsupportedVersionError.
CL::ChangeLog ReadTextLog(std::istream& is, std::string_view prefix);

/// Writes an event as an object of the text form: a CL::Marker, CL::Caesura or CL::TempoScale, or a
/// CL::PairedEvent of any other class.
template <typename Event>
void WriteTextEvent(std::ostream& os, const Event& event);

}  // namespace zuna_core
