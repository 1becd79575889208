// What the model of a legacy file does not tell: sequences that a later one of the same kind replaced.
#pragma once

#include <cstddef>
#include <iosfwd>

namespace zuna_toolkit {

/// How many sequences with records were replaced in a whole legacy file that its reader accepts: one of a
/// later sequence of the same kind in the same song. Changes position and mask of the stream.
///@{
std::size_t ReplacedSequencesOfShow(std::istream& stream);
std::size_t ReplacedSequencesOfLog(std::istream& stream);
///@}

}  // namespace zuna_toolkit
