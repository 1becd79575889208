// The property of the targets for current logs.

#pragma once

#include <optional>
#include <sstream>
#include <string>

#include "CL/change_log.h"
#include "cmn/data_error.h"
#include "fuzz/target.h"

namespace fuzz {

inline std::string WriteLog(const CL::ChangeLog& log, const cmn::FileVersion& version) {
  std::ostringstream os;
  log.WriteBinary(os, version);
  return os.str();
}

inline CL::ChangeLog ReadLog(const std::string& bytes) {
  std::istringstream is(bytes);
  return CL::ChangeLog(is);
}

/// Reads `bytes` as a current log. What is refused is refused with a cmn::DataError; what is read can be
/// printed, and written in every version, and comes back the same. Returns the log where the bytes were read.
inline std::optional<CL::ChangeLog> ReadAndConvertLog(const std::string& bytes) {
  std::optional<CL::ChangeLog> log;
  try {
    log = ReadLog(bytes);
  } catch (const cmn::DataError&) {
    return std::nullopt;
  }
  const std::string expected = WriteLog(*log, {1, 1});
  for (const cmn::FileVersion& version : {cmn::FileVersion{1, 1}, {1, 2}, {2, 0}}) {
    const CL::ChangeLog again = ReadLog(WriteLog(*log, version));
    Require(WriteLog(again, {1, 1}) == expected, "every version holds the whole log");
    Require(again.file_version == version, "a log has the version of its file");
  }
  std::ostringstream text;
  for (const auto& [number, song] : log->song_logs()) song->WriteStringDetailed(text, 0);
  return log;
}

}  // namespace fuzz
