// What can be read of the damaged sequences of a legacy song (docs/format-0.md, "sequence").
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/rescue/internal/legacy_sequences.h"
#include "toolkit/rescue/rescue.h"

namespace zuna_toolkit {

/// Sequences that can be read.
struct MendedSequences {
  std::string bytes;
  std::size_t records = 0;           ///< how many were read
  std::vector<std::string> remarks;  ///< what is missing
  std::vector<ByteRange> unread;     ///< bytes before `end` that gave nothing
  std::size_t end = 0;               ///< after the last byte that was read
  bool has_last = false;             ///< whether all of the last one is there
};

/// Takes what can be read of the sequences between `begin` and `end`, and corrects lengths and frames. After
/// damage, it goes on with the next sequence that is whole. `stated_size` is how many bytes they have as the
/// record around them states. The length of a sequence counts where the next one follows there. Otherwise its
/// records are all that follow each other. Where both lengths are too large, some of them may be missing.
MendedSequences MendSequences(std::string_view bytes, std::size_t begin, std::size_t end,
                              std::span<const SequenceKind> kinds, std::size_t stated_size);

}  // namespace zuna_toolkit
