// The sequences of legacy files as bytes that may be damaged (docs/format-0.md, "sequence").
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/rescue/internal/salvage.h"

namespace zuna_toolkit {

/// What the sequences of one event code hold.
struct SequenceKind {
  std::uint8_t code;
  std::size_t payload;  ///< of every record in bytes; 0 where it differs
  const char* what;     ///< for people: "meters"
};

/// The sequences of a timeline, and those of a song log.
std::span<const SequenceKind> TimelineSequences();
std::span<const SequenceKind> SongLogSequences();

/// How many sequences the bytes from `begin` to `end` are, at most one of each kind, in any order, with the
/// lengths and frames that a writer gives them. 0 where they are anything else, and where no steps are left.
std::size_t CountSequences(std::string_view bytes, std::size_t begin, std::size_t end,
                           std::span<const SequenceKind> kinds, Steps& steps);

/// Whether a sequence of one of these kinds begins at `at`, as far as its code tells.
bool BeginsSequence(std::string_view bytes, std::size_t at, std::span<const SequenceKind> kinds);

/// Sequences that can be read.
struct MendedSequences {
  std::string bytes;
  std::size_t records = 0;           ///< how many were read
  std::vector<std::string> remarks;  ///< what is missing
  std::vector<ByteRange> unread;     ///< bytes before `end` that gave nothing
  std::size_t end = 0;               ///< after the last byte that was read
};

/// Takes what can be read of the sequences between `begin` and `end`, and corrects lengths and frames. After
/// damage, it goes on with the next sequence that is whole.
MendedSequences MendSequences(std::string_view bytes, std::size_t begin, std::size_t end,
                              std::span<const SequenceKind> kinds);

}  // namespace zuna_toolkit
