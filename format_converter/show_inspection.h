#pragma once

#include <string>

#include "cmn/file_version.h"
#include "kit/api.h"

// What shows hold, printed to standard output for a person. No file is changed.

/// Prints a line about the range, then the name and the version of every file in `dir` whose name ends in
/// ".showdata", which is encrypted with an empty key and IV, and whose version is at least `lo` and below
/// `hi`. Throws what listing a directory, opening an encrypted file and probing its version throw; the lines
/// before that stay printed.
ZUNA_API void filter_showdata_by_version(const std::string& dir, const cmn::FileVersion& lo,
                                         const cmn::FileVersion& hi);

/// Prints every program change of the current show at `path`, which is not encrypted, under its song and its
/// voice, with its time in ticks. Throws FormatConverterIOError when the file cannot be opened, and what the
/// core library throws for a show that it cannot read.
ZUNA_API void PrintProgramChanges(const std::string& path);
