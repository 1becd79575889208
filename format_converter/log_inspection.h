#pragma once

#include <iosfwd>
#include <string>

#include "kit/api.h"

namespace CL {
class ChangeLog;
}
namespace version0 {
struct ChangeLogV0;
}

// What logs hold, printed to standard output for a person. No file is changed.

/// Prints `s` and a line end.
ZUNA_API void print_string(const std::string& s);

/// Prints the read position of `is` in bytes, -1 on a failed stream, and a line end. The position does not
/// change.
ZUNA_API void print_pos(std::istream& is);

/// Prints the show's name and the number of every song log, in plain byte order.
ZUNA_API void print_songs(const CL::ChangeLog& log);

/// Prints the song log with the greatest number, and only that one, with all its edits. Nothing for an empty
/// log.
ZUNA_API void print_events_v0(const version0::ChangeLogV0& log);

/// Prints the song log with the number `song` and all its edits. Throws std::out_of_range where there is
/// none.
ZUNA_API void print_events_v1(const CL::ChangeLog& log, const char* song);
