// What is said about losses.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "toolkit/comparison/comparison.h"

namespace zuna_cli {

/// All losses of one code.
struct LossKind {
  std::string code;
  zuna_toolkit::Subject subject;
  zuna_toolkit::Action action;
  bool is_up;        ///< on the way to a current version
  bool is_harmless;  ///< the music is the same without them, or `up` brings them back
  std::size_t count = 0;
};

/// Whether the companion of a file has what is lost of this kind on the way down.
bool IsInCompanion(zuna_toolkit::Subject subject);

/// The line of a loss on the way up that has one of its own; empty for any other.
std::string OwnLine(const zuna_toolkit::Difference& loss);

/// The line of a kind in one file, with the first loss: "format 0.0 does not keep 3 voice numbers (song 1:
/// voice 12 becomes voice 2) [voice-renumbered]".
std::string KindLine(const LossKind& kind, const zuna_toolkit::Difference& first);

/// "3 voice numbers, 1 show name"
std::string KindsText(const std::vector<LossKind>& kinds);

/// The line of a kind in several files, and why it does no harm, or does.
std::string TotalLine(const LossKind& kind);

}  // namespace zuna_cli
