// Standard input and output in place of files.
#pragma once

#include <string>
#include <string_view>

namespace zuna_cli {

/// The path that means standard input or output.
constexpr std::string_view kStandardStream = "-";

/// What messages call the input `path`.
std::string InputName(const std::string& path);

/// What messages call the output `path`.
std::string OutputName(const std::string& path);

/// Writes to standard output. Throws Failure: kIo, or kClosedPipe without a message.
void WriteStandardOutput(std::string_view bytes);

}  // namespace zuna_cli
