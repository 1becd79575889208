#pragma once

#include "platform/core/binary/byte_reader.h"
#include "platform/core/binary/byte_writer.h"
#include "zuna_midi/show_data.h"

namespace zuna_core {

/// The body of a show file of version 1.2: variable-length integers, times as differences, running status
/// (docs/format-1.md, "Compact layout").
void EncodeCompactShow(const zuna_midi::ShowData& show, ByteCounter& sink);
void EncodeCompactShow(const zuna_midi::ShowData& show, ByteWriter& sink);

/// Throws cmn::DataError.
zuna_midi::ShowData DecodeCompactShow(ByteReader& in);

}  // namespace zuna_core
