// The text form of documents of every version: JSON that people can read, compare and edit.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <span>
#include <string>
#include <string_view>

#include "kit/api.h"
#include "toolkit/document/document.h"
#include "toolkit/document/open.h"

namespace zuna_toolkit {

/// Writes `document` as text that states kind and version: docs/format-2.md for a current document,
/// docs/text-form.md for a legacy one. Throws Error: ErrorKind::kIo
/// where `os` cannot be written, kIncompleteSong where a program built a song without one of its parts.
ZUNA_API void WriteTextForm(const Document& document, std::ostream& os);

/// What the file of a legacy document has that its text has not, such as "3 bytes after the last song"; empty
/// for nothing.
ZUNA_API std::string LeftOutOfText(const Document& document);

/// Whether `file` holds a text form of another version than 2.0, whose files are text themselves.
ZUNA_API bool IsTextForm(OpenedFile& file);

/// The document of the version that `text` states. `name` is what messages call it. What `text` cannot say
/// of a legacy file, such as bytes after its last song, is not there. A byte order mark before the text is
/// passed over, and not counted. Throws Error (kTextError) with path, line and column.
ZUNA_API Document ReadTextForm(std::string_view text, const std::string& name);

/// The same for the whole of `file`.
ZUNA_API Document ReadTextForm(OpenedFile& file);

/// Checks plaintext that is to be encrypted as it is. What does not begin like a text form passes. Throws
/// Error (kTextError) with path, line and column for one with errors, and for one of a version whose files
/// are no text; what ReadTextForm() throws otherwise.
ZUNA_API void RequireCorrectText(std::span<const std::uint8_t> plaintext, const std::string& name);

}  // namespace zuna_toolkit
