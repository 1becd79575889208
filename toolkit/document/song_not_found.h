// What is said about a song that a document does not have.
#pragma once

#include <string>

#include "toolkit/error.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

/// Throws Error (kSongNotFound), which tells the numbers that there are: the keys of `songs`. An empty
/// `number` was not given.
template <typename Songs>
[[noreturn]] void ThrowSongNotFound(const std::string& file, const std::string& number, const Songs& songs) {
  std::string numbers;
  for (const auto& [other, song] : songs) AppendListed(numbers, NumberText(other));
  ErrorParts parts;
  parts.file = file;
  parts.problem = number.empty() ? "does not have just one song" : "has no song " + number;
  parts.remedy = (number.empty() ? "name one of its songs, which are " : "its songs are ") +
                 (numbers.empty() ? "none" : numbers);
  parts.song = number;
  throw Error(ErrorCode::kSongNotFound, std::move(parts));
}

}  // namespace zuna_toolkit
