// The sequences of legacy files as bytes that may be damaged (docs/format-0.md, "sequence").
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "toolkit/rescue/internal/salvage.h"

namespace zuna_toolkit {

/// What the sequences of one event code hold.
struct SequenceKind {
  std::uint8_t code;
  std::size_t payload;  ///< of every record in bytes; 0 where it differs
  const char* what;     ///< for people: "meters"
};

inline constexpr std::size_t kSequenceHead = 1 + 4;  ///< event code and body length, in bytes

/// The sequences of a timeline, and those of a song log.
std::span<const SequenceKind> TimelineSequences();
std::span<const SequenceKind> SongLogSequences();

/// How a sequence begins.
struct SequenceStart {
  const SequenceKind* kind;
  std::size_t length;  ///< that it states
};

/// The beginning of a sequence of one of these kinds at `at`, as far as its code tells.
std::optional<SequenceStart> StartAt(std::string_view bytes, std::size_t at,
                                     std::span<const SequenceKind> kinds);

/// The frame of a record: event code and payload length.
std::string FrameBytes(const SequenceKind& kind);

/// The size of every record of a kind, in bytes; 0 where it differs.
std::size_t RecordSize(const SequenceKind& kind);

/// The end of the record at `at`, where it is whole and as a writer writes it.
std::optional<std::size_t> RecordEnd(std::string_view bytes, std::size_t at, const SequenceKind& kind);

/// How many sequences the bytes from `begin` to `end` are, at most one of each kind, in any order, with the
/// lengths and frames that a writer gives them. 0 where they are anything else, and where no steps are left.
std::size_t CountSequences(std::string_view bytes, std::size_t begin, std::size_t end,
                           std::span<const SequenceKind> kinds, Steps& steps);

}  // namespace zuna_toolkit
