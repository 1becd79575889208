// Conversion of documents between format 0.0 and the current versions (docs/conversion.md).
#pragma once

#include "cmn/file_version.h"
#include "kit/api.h"
#include "toolkit/conversion/companion.h"
#include "toolkit/document/document.h"

namespace zuna_toolkit {

/// Brings a legacy document to a current version. A show gets the name that `companion` tells, the songs of a
/// log get their divisions; FitOf() tells whether the companion belongs. Throws Error: kNoSuchVersion for a
/// version that is not written; ErrorKind::kBadInput for a document of a current version, and for a song that
/// cannot be converted.
ZUNA_API Document Up(const Document& legacy, const Companion& companion, cmn::FileVersion version);

/// Brings a document of a current version to version 0.0. Throws Error (ErrorKind::kBadInput) for a legacy
/// document and for one that format 0.0 cannot hold: a text of more than 255 bytes, more than 255 songs or
/// 239 voices besides drums, a song without messages or without a tempo at its first meter; kIncompleteSong
/// where a program built a song without one of its parts.
ZUNA_API Document Down(const Document& current);

/// A document of a current version at another one. Throws Error: kNoSuchVersion for a version that is not
/// written, ErrorKind::kBadInput for a legacy document.
ZUNA_API Document Convert(const Document& current, cmn::FileVersion version);

/// The document in its current form, which a legacy one gets without a companion: a show has no name, the
/// songs of a log have no divisions. Throws Error (ErrorKind::kBadInput) for a song that cannot be converted.
ZUNA_API Document CurrentForm(const Document& document);

}  // namespace zuna_toolkit
