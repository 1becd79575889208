// Whether a report of a rescue accounts for every byte.
#pragma once

#include <cstddef>
#include <string>

#include "toolkit/rescue/rescue.h"

namespace zuna_test {

/// Says what is wrong with the ranges of a report about a plaintext of `size` bytes. Empty where each byte is
/// of one song that came back, is framing, or is unread, and where only songs that came back in part have
/// unread bytes inside.
inline std::string WrongAccount(const zuna_toolkit::RescueReport& report, std::size_t size) {
  using zuna_toolkit::SongState;
  std::string owners(size, ' ');  // of each byte
  std::string wrong;
  const auto own = [&](std::uint64_t begin, std::uint64_t end, char owner, const std::string& allowed) {
    if (begin > end || end > size) wrong = std::string("a range of ") + owner + " is not in the file";
    for (std::uint64_t at = begin; at < end && wrong.empty(); ++at) {
      char& byte = owners[static_cast<std::size_t>(at)];
      if (allowed.find(byte) == std::string::npos) {
        wrong = "byte " + std::to_string(at) + " is of " + byte + " and of " + owner;
      }
      byte = owner;
    }
  };
  for (const auto& range : report.framing) own(range.begin, range.end, 'f', " ");
  for (const auto& song : report.songs) {
    if (song.state == SongState::kLost) continue;
    if (!song.offset || !song.end) return "";  // A document that its own reader takes is not looked through.
    own(*song.offset, *song.end, song.state == SongState::kWhole ? 'w' : 'p', " ");
  }
  for (const auto& range : report.unread) own(range.begin, range.end, 'u', " p");
  for (const auto& song : report.songs) {
    if (song.state == SongState::kLost) own(song.offset.value_or(size), song.end.value_or(size), 'u', "u");
  }
  if (wrong.empty() && !report.songs.empty() && owners.find(' ') != std::string::npos) {
    wrong = "byte " + std::to_string(owners.find(' ')) + " is not accounted for";
  }
  return wrong;
}

}  // namespace zuna_test
