#pragma once

// The body of a binary log file (docs/format-1.md): every field at its full width in version 1.1, compact in
// 1.2.

#include "CL/change_log.h"
#include "platform/core/bytes/byte_reader.h"
#include "platform/core/bytes/byte_writer.h"

namespace zuna_core {

void EncodeLog(const CL::ChangeLog& log, cmn::FileVersion version, ByteCounter& sink);
void EncodeLog(const CL::ChangeLog& log, cmn::FileVersion version, ByteWriter& sink);

/// Throws cmn::DataError.
CL::ChangeLog DecodeLog(ByteReader& in, cmn::FileVersion version);

/// An event as it stands at the front of its list: a CL::Marker, CL::Caesura or CL::TempoScale, or a
/// CL::PairedEvent of any other class.
template <typename Event>
void EncodeEvent(const Event& event, cmn::FileVersion version, ByteWriter& sink);

}  // namespace zuna_core
