#pragma once

#include <cstddef>

#include "CL/change_log.h"
#include "cli/files/input_file.h"
#include "format_converter/version0/containers/change_log.h"

namespace zuna_cli {

/// A legacy log, and what its file has that the log has not.
struct LegacyLog {
  version0::ChangeLogV0 log;
  std::size_t replaced_songs = 0;  ///< song logs that gave way to a later one of their number
};

/// Reads the log in `file`, which is a log. Throws Failure.
LegacyLog ReadLegacyLog(InputFile& file);
CL::ChangeLog ReadCurrentLog(InputFile& file);

/// The log in `file`, of whatever version, in its current form. Throws Failure.
CL::ChangeLog ReadAnyLog(InputFile& file);

}  // namespace zuna_cli
