// What the beginning of a plaintext tells.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <span>
#include <string>
#include <string_view>

namespace zuna_toolkit {

/// `bytes` as text.
inline std::string_view AsText(std::span<const std::uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// Puts the stream back to its beginning, with a clear state and mask.
void Rewind(std::istream& stream);

/// The first `size` bytes of the stream, or all where it has less; the stream is at its beginning then.
std::string StartOf(std::istream& stream, std::size_t size);

/// Whether `text` is meant to be a text form: it begins with "{", perhaps after a byte order mark and white
/// space. The text form itself allows neither.
bool BeginsLikeTextForm(std::string_view text);

/// Reads a plaintext that begins like a text form once. Throws what is wrong with it: Error without a file,
/// or cmn::DataError. Any other plaintext passes.
void ReadTextForm(std::istream& stream);

}  // namespace zuna_toolkit
