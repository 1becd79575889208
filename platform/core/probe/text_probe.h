#pragma once

#include <iosfwd>

#include "cmn/file_version.h"
#include "platform/core/binary/header.h"

namespace zuna_core {

/// The version that the text document of this kind states that begins at the position of the stream; 0.0
/// where none of this kind stands there. Reads no further than needed, in constant memory.
cmn::FileVersion ProbeText(std::istream& is, FileKind kind);

}  // namespace zuna_core
