// What people call the edits of a log.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "CL/song_log.h"

namespace zuna_toolkit {

/// How many things of one kind a page draws or lists of one song. The rest is counted.
inline constexpr std::size_t kMostOfAKind = 500;

/// One edit as it is drawn and listed.
struct ViewedEdit {
  std::uint32_t start = 0;  ///< ticks
  std::uint32_t end = 0;    ///< ticks; the start for an edit at one position
  std::string text;         ///< what it does, in short, such as "×3" for a repeat
  std::string label;        ///< as the log has it
  bool only_here = false;   ///< the log that it is compared with does not have it
};

/// How the edits of a kind are drawn.
enum class EditShape : std::uint8_t {
  kBracket,  ///< over a part of the song
  kCut,      ///< the same; the part is left out, and pale in all rows
  kSpan,     ///< a part of the song that is shaded
  kLetter,   ///< a text in a frame
  kFermata,  ///< the sign
  kCaesura,  ///< the sign
};

/// The edits of one kind.
struct EditKind {
  std::string_view one;        ///< "Vamp"
  std::string_view many;       ///< "Vamps"
  std::string_view css_class;  ///< "vamp"
  EditShape shape = EditShape::kBracket;
  std::vector<ViewedEdit> edits;            ///< kMostOfAKind at most
  std::size_t more = 0;                     ///< how many there are besides
  std::vector<ViewedEdit> only_there = {};  ///< of the other log; kMostOfAKind at most
};

/// All kinds that `log` has edits of, in the order in which they are drawn. Edits of `other`, which may be
/// null, are compared with them.
std::vector<EditKind> EditsOf(const CL::SongLog& log, const CL::SongLog* other);

}  // namespace zuna_toolkit
