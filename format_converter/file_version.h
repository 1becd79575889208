#pragma once

// Probes and prints the version of a file.

#include <iosfwd>
#include <string>

#include "cmn/file_version.h"
#include "kit/api.h"

/// The version of the show data in a decrypted stream, whatever the read position.
/// Throws kit::IoError ("Failed reading istream…") when the stream throws std::ios_base::failure.
ZUNA_API cmn::FileVersion WrapGetShowdataVersion(std::istream& is);

/// The same for log data.
ZUNA_API cmn::FileVersion WrapGetLogdataVersion(std::istream& is);

/// The version of the show file at `path`, encrypted with an empty key and IV.
/// Throws what opening an encrypted file throws, and what WrapGetShowdataVersion throws.
ZUNA_API cmn::FileVersion GetShowdataFileVersion(const std::string& path);

/// Prints "PATH has file version: MAJOR.MINOR" to standard output. The label is printed before the file is
/// opened. When the file cannot be read, only the label is printed and the exception is passed on.
ZUNA_API void print_file_version(const std::string& path);
