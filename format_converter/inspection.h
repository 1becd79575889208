#pragma once

// Prints what shows and logs hold to standard output, for people. Every line ends with a newline and a flush.
// No file is changed.

#include <iosfwd>
#include <string>

#include "cmn/file_version.h"
#include "kit/api.h"

namespace CL {
class ChangeLog;
}
namespace version0 {
struct ChangeLogV0;
}

/// Prints a line about the range, then the name and the version of every file in `dir` whose name ends in
/// ".showdata" and whose version is at least `lo` and below `hi`. The files are encrypted with an empty key
/// and IV; pipes, devices and sockets are passed over. Throws kit::IoError (kit/error.h) when the directory
/// cannot be listed or a file not read, and a zuna_sec::CipherError (zuna_sec/errors.h) for what is in a
/// file. What was printed before an exception stays printed.
ZUNA_API void filter_showdata_by_version(const std::string& dir, const cmn::FileVersion& lo,
                                         const cmn::FileVersion& hi);

/// Prints every program change of the current show at `path`, which is not encrypted: its song, its voice and
/// its time in ticks. Throws FormatConverterIOError (format_converter/errors.h) when the file cannot be
/// opened, and cmn::DataError (cmn/data_error.h) for a show that cannot be read: cmn::UnsupportedVersionError
/// for its version.
ZUNA_API void PrintProgramChanges(const std::string& path);

/// Prints the bytes of `s` as they stand, whatever the width of standard output, and a newline.
ZUNA_API void print_string(const std::string& s);

/// Prints the read position of `is` in bytes and a newline; -1 for a failed stream. The position does not
/// change.
ZUNA_API void print_pos(std::istream& is);

/// Prints the show's name and the number of every song log, in plain byte order.
ZUNA_API void print_songs(const CL::ChangeLog& log);

/// Prints the song log with the greatest number in byte order, in which "9" comes after "10", and its edits.
/// Prints nothing for an empty log.
ZUNA_API void print_events_v0(const version0::ChangeLogV0& log);

/// Prints the song log with the number `song` and its edits. Throws std::out_of_range when there is none,
/// and std::logic_error when it is null.
ZUNA_API void print_events_v1(const CL::ChangeLog& log, const char* song);
