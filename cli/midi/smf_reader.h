#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>

#include "cli/midi/smf_file.h"

namespace zuna_cli::smf {

/// A file that cannot be read: the message tells what, the offset in bytes and what to do.
class ReadError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// What a reader put up with.
struct ReadNotes {
  std::size_t declared_tracks = 0;         ///< the track count of the header
  std::size_t unknown_chunks = 0;          ///< skipped
  std::size_t missing_ends = 0;            ///< tracks without an End of Track
  std::size_t bytes_after_end = 0;         ///< bytes in track chunks after their End of Track
  std::size_t bytes_after_last_chunk = 0;  ///< too few to be a chunk
};

/// Reads a Standard MIDI File of format 0 or 1 with a division in ticks of a quarter note. Any bytes may be
/// given; memory stays within a small multiple of them. Throws ReadError.
File Read(std::span<const std::uint8_t> bytes, ReadNotes& notes);

}  // namespace zuna_cli::smf
