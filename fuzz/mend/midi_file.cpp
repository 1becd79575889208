// Mends Standard MIDI Files.

#include <algorithm>

#include "fuzz/mend/mend.h"
#include "fuzz/mend/numbers.h"

namespace fuzz {

namespace {

constexpr std::size_t kHeaderSize = 14;
constexpr std::size_t kTracksAt = 10;
constexpr std::size_t kChunkHeaderSize = 8;

}  // namespace

std::string MendMidiFile(std::string bytes) {
  if (bytes.size() < kHeaderSize) return bytes;
  std::size_t tracks = 0;
  std::size_t chunk = std::min(bytes.find("MTrk", kHeaderSize), bytes.size());
  PutBigEndian(bytes, 4, 4, chunk - kChunkHeaderSize);
  while (chunk + kChunkHeaderSize <= bytes.size()) {
    const std::size_t end = std::min(bytes.find("MTrk", chunk + kChunkHeaderSize), bytes.size());
    PutBigEndian(bytes, chunk + 4, 4, end - chunk - kChunkHeaderSize);
    ++tracks;
    chunk = end;
  }
  PutBigEndian(bytes, kTracksAt, 2, tracks);
  return bytes;
}

}  // namespace fuzz
