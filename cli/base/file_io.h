#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zuna_cli {

/// The path that means standard input or output.
constexpr std::string_view kStandardStream = "-";

/// What messages call the input `path`.
std::string InputName(const std::string& path);

/// What messages call the output `path`.
std::string OutputName(const std::string& path);

/// The bytes of the file at `path`, or of standard input for "-". Throws Failure (kIo) when it cannot be read
/// and (kBadInput) when it has more than `limit` bytes.
std::vector<std::uint8_t> ReadBytes(const std::string& path, std::size_t limit);

/// The most that an encrypted file holds; more is not worth reading.
constexpr std::size_t kMaxFileSize = (std::size_t{1} << 30) + 4096;

/// Writes to standard output. Throws Failure (kIo).
void WriteStandardOutput(std::string_view bytes);

/// Puts `bytes` into the file at `path` in one step: the old file or the new one, never a part, and nothing
/// else is left behind. `mode` is that of a new file; one that is replaced keeps its own. Throws Failure
/// (kIo).
void WriteFileAtomically(const std::string& path, std::string_view bytes, unsigned mode);

}  // namespace zuna_cli
