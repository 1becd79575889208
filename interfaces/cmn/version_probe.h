#pragma once

#include <iosfwd>

#include "cmn/file_version.h"
#include "kit/api.h"

namespace cmn {

/// The version of the show data in the decrypted stream `is`.
///
/// Looks at the beginning of the stream whatever its position is, and leaves position and state as it found
/// them. Data without the header of a current file of that kind is taken for the legacy format and gives 0.0;
/// a text document gives the version that it states, in whatever order its keys stand. May throw
/// std::ios_base::failure: on a stream whose exception mask asks for it, when the data is shorter than a
/// header or cannot be read.
ZUNA_API FileVersion get_showdata_version(std::istream& is);

/// The same for log data.
ZUNA_API FileVersion get_logdata_version(std::istream& is);

}  // namespace cmn
