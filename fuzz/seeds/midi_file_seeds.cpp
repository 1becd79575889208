// Standard MIDI Files.

#include <string>

#include "fuzz/seeds/seeds.h"

namespace {

std::vector<std::uint8_t> Bytes(const std::string& text) { return {text.begin(), text.end()}; }

template <std::size_t N>
std::string B(const char (&literal)[N]) {
  return std::string(literal, N - 1);
}

std::string Header(char format, char tracks) {
  return B("MThd\x00\x00\x00\x06") + std::string{0, format, 0, tracks} + B("\x01\xE0");
}

std::string Track(const std::string& body) {
  return B("MTrk") + std::string{0, 0, 0, static_cast<char>(body.size())} + body;
}

}  // namespace

void fuzz::WriteSeeds(const SeedFolder& folder) {
  const std::string end = B("\x00\xFF\x2F\x00");
  const std::string timeline =
      B("\x00\xFF\x03\x04Song\x00\xFF\x51\x03\x07\xA1\x20\x00\xFF\x58\x04\x06\x03\x24\x08") +
      B("\x00\xFF\x59\x02\xFD\x01") + end;
  const std::string notes = B("\x00\xC9\x05\x00\x90\x3C\x64\x83\x60\x3C\x00\x00\xF0\x02\x7E\xF7") + end;

  folder.Write("good-format-0", Bytes(Header(0, 1) + Track(notes)));
  folder.Write("good-format-1", Bytes(Header(1, 2) + Track(timeline) + Track(notes)));
  folder.Write("good-unknown-chunk", Bytes(Header(0, 1) + B("XFIH\x00\x00\x00\x01?") + Track(notes)));
  folder.Write("good-no-end-of-track", Bytes(Header(0, 1) + Track(B("\x05\xE3\x00\x40"))));
  folder.Write("bad-empty", {});
  folder.Write("bad-running-status-after-meta",
               Bytes(Header(0, 1) + Track(B("\x00\x90\x3C\x64\x00\xFF\x01\x00\x00\x3C\x00"))));
  folder.Write("bad-truncated", Bytes((Header(1, 2) + Track(timeline) + Track(notes)).substr(0, 70)));
  folder.Write("unsupported-format-2", Bytes(Header(2, 1) + Track(notes)));
  folder.Write("unsupported-smpte", Bytes(B("MThd\x00\x00\x00\x06\x00\x00\x00\x01\xE7\x28") + Track(notes)));
}
