#pragma once

// Probes and prints the version of a file.
//
// The version of a file that is encrypted with a key of one's own:
//
//   zuna_sec::TwoFishCipherStream file(path, key.key, key.iv);  // zuna_sec/cipher_stream.h
//   const cmn::FileVersion version = WrapGetShowdataVersion(file.GetStream());
//
// 0.0 alone does not tell that a file is of the legacy format: each probe knows the current files of its own
// kind and gives 0.0 for everything else. A plaintext holds
// - a current show or log where the probe of this kind gives another version than 0.0;
// - otherwise a legacy log where it begins with version0::kChangeLogMagic
//   (format_converter/version0/containers/change_log_header.h), and a whole one where check_log_size()
//   (format_converter/logdata.h) says so;
// - otherwise a legacy show where version0::ShowData (format_converter/version0/containers/show_data.h)
//   reads it from its beginning without an error. One without songs is a single zero byte: zero and more
//   bytes are something else.
//
// zuna_toolkit::Detect() (toolkit/document/open.h), of the toolkit's library, tells all of this in one call.

#include <iosfwd>
#include <string>

#include "cmn/file_version.h"
#include "kit/api.h"

/// The version of the show data in a decrypted stream, whatever the read position. 0.0 means a legacy show,
/// but also a log of any version, other data, or too few bytes. Throws kit::IoError (kit/error.h, "Failed
/// reading istream…") when the stream throws std::ios_base::failure.
ZUNA_API cmn::FileVersion WrapGetShowdataVersion(std::istream& is);

/// The same for log data. 0.0 means a legacy log, but also a show of any version, other data, or too few
/// bytes.
ZUNA_API cmn::FileVersion WrapGetLogdataVersion(std::istream& is);

/// The version of the show file at `path`, as WrapGetShowdataVersion() gives it. Opens only files that are
/// encrypted with an empty key and IV. Throws kit::IoError (kit/error.h) when the file cannot be read, and a
/// zuna_sec::CipherError (zuna_sec/errors.h) for what is in it: WrongKeyError when it has another key.
ZUNA_API cmn::FileVersion GetShowdataFileVersion(const std::string& path);

/// Prints "PATH has file version: MAJOR.MINOR" to standard output. The label is printed before the file is
/// opened. When the file cannot be read, only the label is printed. Throws the same as
/// GetShowdataFileVersion().
ZUNA_API void print_file_version(const std::string& path);
