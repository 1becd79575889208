// Standard input and output in place of files; messages on standard error.
#pragma once

#include <string>
#include <string_view>

#include "cli/terminal/failure.h"

namespace zuna_cli {

/// The path that means standard input or output.
constexpr std::string_view kStandardStream = "-";

/// Opens the null device for every one of descriptors 0 to 2 that is closed, in the direction that its use
/// fails: an output that is asked for on a closed standard output is an error, and no file that the program
/// opens later gets one of these numbers. Called before anything else. Returns false where that fails.
bool OccupyStandardDescriptors();

/// What messages call the input `path`.
std::string InputName(const std::string& path);

/// What messages call the output `path`.
std::string OutputName(const std::string& path);

/// Writes to standard output. Throws Failure: kIo, or kClosedPipe.
void WriteStandardOutput(std::string_view bytes);

/// Writes "zuna-convert: ", the message and its code to standard error, in colour on a terminal unless the
/// environment has NO_COLOR. Wrong usage, internal errors and interrupts stand without a code: it would say
/// nothing more than the message. A closed output pipe is not reported: its reader has stopped on purpose.
void PrintError(const Failure& failure);

/// "zuna-convert: NAME: " and the text, as a line for a terminal.
std::string NoteLine(const std::string& name, const std::string& text);

/// Writes a line, which ends with its line break, to standard error. Needs no memory. What cannot be written
/// there is not said at all: the result does not depend on it.
void PrintLine(std::string_view line);

}  // namespace zuna_cli
