// The property of the targets for current shows.

#pragma once

#include <optional>
#include <sstream>
#include <string>

#include "cmn/data_error.h"
#include "fuzz/target.h"
#include "zuna_midi/show_data.h"

namespace fuzz {

inline std::string Write(const zuna_midi::ShowData& show, const cmn::FileVersion& version) {
  std::ostringstream os;
  show.WriteBinary(os, version);
  return os.str();
}

inline zuna_midi::ShowData Read(const std::string& bytes) {
  std::istringstream is(bytes);
  return zuna_midi::ShowData(is);
}

/// Reads `bytes` as a current show. What is refused is refused with a cmn::DataError; what is read can be
/// written in every version and comes back the same. Returns whether the bytes were read.
inline bool ReadAndConvert(const std::string& bytes) {
  std::optional<zuna_midi::ShowData> show;
  try {
    show = Read(bytes);
  } catch (const cmn::DataError&) {
    return false;
  }
  const std::string expected = Write(*show, {1, 0});
  for (const cmn::FileVersion& version : {cmn::FileVersion{1, 0}, {1, 1}, {1, 2}, {2, 0}}) {
    Require(Write(Read(Write(*show, version)), {1, 0}) == expected, "every version holds the whole show");
  }
  return true;
}

}  // namespace fuzz
