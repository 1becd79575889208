#pragma once

// The parts of reading and writing show files that file.cpp puts together: the body of a binary file
// (docs/format-1.md) and the text form (docs/format-2.md).

#include <iosfwd>
#include <string_view>

#include "platform/core/bytes/byte_reader.h"
#include "platform/core/bytes/byte_writer.h"
#include "zuna_midi/show_data.h"

namespace zuna_core {

/// The body of a binary file: its layout is that of the version. Decoding throws cmn::DataError.
///@{
void EncodeShow(const zuna_midi::ShowData& show, cmn::FileVersion version, ByteCounter& sink);
void EncodeShow(const zuna_midi::ShowData& show, cmn::FileVersion version, ByteWriter& sink);
zuna_midi::ShowData DecodeShow(ByteReader& in, cmn::FileVersion version);
///@}

/// The text form, which states this version.
void WriteTextShow(std::ostream& os, const zuna_midi::ShowData& show, cmn::FileVersion stated);

/// `prefix` is what has been read from the stream already. Throws cmn::DataError,
/// cmn::UnsupportedVersionError.
zuna_midi::ShowData ReadTextShow(std::istream& is, std::string_view prefix);

}  // namespace zuna_core
