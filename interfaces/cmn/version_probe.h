#pragma once

// Which version the data in a stream has (docs/format-1.md, docs/format-2.md).

#include <iosfwd>

#include "cmn/file_version.h"
#include "kit/api.h"

namespace cmn {

/// The version of the show data in the decrypted stream `is`.
///
/// Reads the beginning of the stream whatever its position is, and restores position and state. The text form
/// gives the version that it states, in any order of its keys. 0.0 means "no current show": the legacy
/// format, which states no version, but also a log, other data, or too few bytes. So 0.0 does not tell that
/// the data is a legacy show. Other versions are as stated, and need not be supported. May throw
/// std::ios_base::failure: on a stream whose exception mask asks for it, when the data is shorter than a
/// header or cannot be read.
ZUNA_API FileVersion get_showdata_version(std::istream& is);

/// The same for log data.
ZUNA_API FileVersion get_logdata_version(std::istream& is);

}  // namespace cmn
