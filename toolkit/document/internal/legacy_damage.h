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

/// Whether `plaintext` is a legacy show of which at least the first song can be read, or a whole one without
/// songs. A legacy show has no mark; this tells one, also a damaged one, from other bytes. The stream is at
/// its beginning then.
bool HoldsLegacySong(std::istream& plaintext);

}  // namespace zuna_toolkit
