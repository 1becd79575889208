// Where a legacy file that cannot be read is damaged (docs/format-0.md).
#pragma once

#include <iosfwd>

#include "cmn/file_format.h"
#include "toolkit/error.h"

namespace zuna_toolkit {

/// Reads the legacy show or log in `plaintext`, which cannot be read as a whole, song by song, and tells in
/// which one reading fails and at which byte: an Error without a file. A log whose songs can be read has
/// another length than its header says. Keeps one song in memory at a time. Passes std::bad_alloc on.
Error LegacyDamage(std::istream& plaintext, cmn::FileKind kind);

}  // namespace zuna_toolkit
