#pragma once

// The body of a binary show file (docs/format-1.md): every field at its full width in versions 1.0 and 1.1,
// compact in 1.2.

#include "platform/core/bytes/byte_reader.h"
#include "platform/core/bytes/byte_writer.h"
#include "zuna_midi/show_data.h"

namespace zuna_core {

void EncodeShow(const zuna_midi::ShowData& show, cmn::FileVersion version, ByteCounter& sink);
void EncodeShow(const zuna_midi::ShowData& show, cmn::FileVersion version, ByteWriter& sink);

/// Throws cmn::DataError.
zuna_midi::ShowData DecodeShow(ByteReader& in, cmn::FileVersion version);

}  // namespace zuna_core
