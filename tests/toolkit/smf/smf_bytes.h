#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/smf/file.h"

namespace zuna_toolkit::smf {

/// Files for tests are written as lists of texts, one commented field a line.
inline std::string Join(const std::vector<std::string>& fields) {
  std::string bytes;
  for (const std::string& field : fields) bytes += field;
  return bytes;
}

/// The bytes of a literal, NULs included.
template <std::size_t N>
std::string B(const char (&literal)[N]) {
  return std::string(literal, N - 1);
}

inline std::span<const std::uint8_t> AsBytes(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/// A header chunk of one-digit numbers, division 480.
inline std::string Header(int format, int tracks) {
  return Join({
      B("MThd"), B("\x00\x00\x00\x06"),           // type, length
      std::string{0, static_cast<char>(format)},  // format
      std::string{0, static_cast<char>(tracks)},  // number of tracks
      B("\x01\xE0"),                              // 480 ticks of a quarter note
  });
}

/// A track chunk with this body of at most 255 bytes.
inline std::string TrackChunk(const std::string& body) {
  return B("MTrk") + std::string{0, 0, 0, static_cast<char>(body.size())} + body;
}

inline File ReadText(const std::string& bytes, ReadNotes& notes) { return Read(AsBytes(bytes), notes); }

inline File ReadText(const std::string& bytes) {
  ReadNotes notes;
  return ReadText(bytes, notes);
}

}  // namespace zuna_toolkit::smf
