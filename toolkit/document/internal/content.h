// What the beginning of a plaintext tells.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <span>
#include <string>
#include <string_view>

#include "format_converter/version0/containers/show_data.h"
#include "toolkit/document/open.h"
#include "toolkit/error_code.h"

namespace zuna_toolkit {

/// Puts the stream back to its beginning, with a clear state and mask.
void Rewind(std::istream& stream);

/// The first `size` bytes of the stream, or all where it has less; the stream is at its beginning then.
std::string StartOf(std::istream& stream, std::size_t size);

/// Whether `text` is meant to be a text form: it begins with "{", perhaps after a byte order mark and white
/// space. The text form itself allows neither.
bool BeginsLikeTextForm(std::string_view text);

/// The version that a text form states, where build makes the file of it: every one but 2.0, whose text is
/// encrypted as it is. Empty for any other text, and where the version stands far behind the beginning.
std::string VersionForBuild(std::string_view text);

/// What to do with the text of such a version.
inline constexpr const char* kUseBuild = "use build first: zuna-convert build TEXT -o OUT";

/// The code of an error in the content of a current file: kTextError for a text form, kBadContent for
/// another. The stream is at its beginning then.
ErrorCode DataCodeOf(std::istream& stream);

/// Throws what is wrong with a plaintext that begins like a text form: Error without a file, or
/// cmn::DataError. Any other plaintext passes.
void RequireReadableText(std::istream& stream);

/// Throws Error (kNotAShowOrLog) without a file where what cannot be read as a legacy show, which has no
/// mark, must have been something else: all but one byte of another mark is there, or the keys of a text
/// form.
void RequireNoDamagedMark(std::istream& stream);

/// Throws Error where nothing tells that `file`, which has no mark, is a show or a log: it is no legacy show
/// of which a song can be read, and is not encrypted (kNotEncrypted, kMidiFile, kArchive) or was encrypted
/// twice (kEncryptedTwice).
void RequireEncryptedOrLegacySong(OpenedFile& file);

/// Throws Error (kEncryptedTwice) without a file where `plaintext` begins like an encrypted file.
void RequireEncryptedOnce(std::span<const std::uint8_t> plaintext);

/// Reads a legacy show from the beginning of the stream, which is behind its last song then. A show without
/// songs is a single byte: where more follows, such as in a file of zeros, throws Error (kNotAShowOrLog)
/// without a file.
version0::ShowData ReadUnmarkedShow(std::istream& stream);

/// Whether files of this type begin with no mark.
inline bool LacksMark(const FileType& type) { return type.is_legacy() && !type.is_log(); }

/// What the mark at the beginning of `file` tells. What has no mark counts as a legacy show, which only
/// reading it can tell: callers read the file as what this returns. Throws as Detect().
FileType TypeByMark(OpenedFile& file);

}  // namespace zuna_toolkit
