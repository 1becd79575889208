#pragma once

#include "platform/core/binary/byte_reader.h"
#include "platform/core/binary/byte_writer.h"
#include "zuna_midi/show_data.h"

namespace zuna_core {

/// The body of a show file of version 1.0 or 1.1: every field at its full width (docs/format-1.md, "Fixed
/// layout").
void EncodeFixedShow(const zuna_midi::ShowData& show, ByteCounter& sink);
void EncodeFixedShow(const zuna_midi::ShowData& show, ByteWriter& sink);

/// Throws cmn::DataError.
zuna_midi::ShowData DecodeFixedShow(ByteReader& in);

}  // namespace zuna_core
