// What is said about losses.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "kit/api.h"
#include "toolkit/comparison/comparison.h"

namespace zuna_toolkit {

/// All losses of one code.
struct LossKind {
  std::string code;       ///< as CodeText() gives it
  Subject subject;        ///< what is lost
  Action action;          ///< how
  bool is_up;             ///< on the way to a current version
  bool is_harmless;       ///< the music is the same without them, or `up` brings them back
  std::size_t count = 0;  ///< how many losses
};

/// Whether the companion of a file has what is lost of this kind on the way down.
ZUNA_API bool IsInCompanion(Subject subject);

/// The line of a loss on the way up that has one of its own; empty for any other.
ZUNA_API std::string OwnLine(const Difference& loss);

/// The line of a kind in one file, with the first loss: "format 0.0 does not keep 3 voice numbers (song 1:
/// voice 12 becomes voice 2) [voice-renumbered]".
ZUNA_API std::string KindLine(const LossKind& kind, const Difference& first);

/// "3 voice numbers, 1 show name"
ZUNA_API std::string KindsText(const std::vector<LossKind>& kinds);

/// The line of a kind in several files, and why it does no harm, or does.
ZUNA_API std::string TotalLine(const LossKind& kind);

}  // namespace zuna_toolkit
