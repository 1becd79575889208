// The calls that all threads make.

#pragma once

#include <functional>
#include <string>
#include <vector>

#include "CL/change_log.h"
#include "format_converter/version0/containers/change_log.h"

namespace zuna_test {

/// What all threads read at once and none changes: paths of files, and the objects that are printed.
struct Inputs {
  std::string folder;  ///< holds `listed_show`
  std::string legacy_show, current_show, legacy_log, current_log;
  std::string listed_show;  ///< encrypted with an empty key and IV
  std::string plain_legacy_show, plain_current_show, plain_legacy_log;  ///< not encrypted
  version0::ChangeLogV0 legacy_log_object;
  CL::ChangeLog current_log_object;
};

/// What one thread works with.
struct Desk {
  const Inputs& inputs;
  std::string output;  ///< a path of the thread's own
};

/// A call of one entry point.
struct Call {
  const char* name;
  std::function<std::string(const Desk&)> run;  ///< gives what came out, the same each time
};

std::vector<Call> VersionCalls();
std::vector<Call> ShowCalls();
std::vector<Call> LogCalls();
std::vector<Call> InspectionCalls();

}  // namespace zuna_test
