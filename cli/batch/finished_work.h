// What a report says was finished.
#pragma once

#include <functional>
#include <set>
#include <string>

#include "cli/batch/output_options.h"
#include "cli/batch/report.h"

namespace zuna_cli {

/// The work that a report has as finished. Each piece has a mark, a digest of the options, the contents of
/// the input and its companion, and what was written.
class FinishedWork {
 public:
  /// None.
  FinishedWork() = default;
  /// What the report at `path` has; nothing where there is no file. A line that was cut off counts for
  /// nothing. Throws kit::IoError.
  explicit FinishedWork(const std::string& path);

  bool empty() const { return marks_.empty(); }
  bool Contains(const std::string& mark) const { return marks_.contains(mark); }

 private:
  std::set<std::string, std::less<>> marks_;
};

/// The mark of work whose output has the content `output_digest`. `line` has the options, the paths and the
/// digest of the input; its companion is read where there is one. Empty, which no work has, where that fails.
std::string FinishedMark(const ReportLine& line, const std::string& output_digest);

}  // namespace zuna_cli
