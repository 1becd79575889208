// What a report says was finished.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "cli/batch/output_options.h"
#include "cli/batch/report.h"

namespace zuna_cli {

/// The work that a report has as finished. Each piece has two marks: FinishedMark() of all that it depends
/// on, and WrittenMark() of what was written.
class FinishedWork {
 public:
  /// None.
  FinishedWork() = default;
  /// What the report at `path` has; nothing where there is no file. A line that was cut off counts for
  /// nothing. Throws kit::IoError.
  explicit FinishedWork(const std::string& path);

  bool empty() const { return marks_.empty(); }
  bool Contains(const std::string& mark) const { return marks_.contains(mark); }
  /// Whether the last line about the input at `path` is not one of finished work.
  bool IsUnfinished(const std::string& path) const;
  /// Whether the last line about the input at `path` is one of a failure.
  bool HasFailed(const std::string& path) const;
  /// The line about finished work, where the last line about the input at `path` says that the output with
  /// the mark `written` was begun; otherwise empty.
  std::string DoneLine(const std::string& path, const std::string& written) const;

 private:
  void Take(std::string_view line);

  std::set<std::string, std::less<>> marks_;
  /// The last lines of inputs where they are not of finished work, by path as JSON.
  std::map<std::string, std::string, std::less<>> unfinished_;
};

/// The mark of an output at the path `output` that has the content `digest`, made of the input at `path`. It
/// is the same for all spellings of these paths from the working folder, as FinishedMark() is.
std::string WrittenMark(const std::string& path, const std::string& output, const std::string& digest);

/// The mark of work whose output has the content `output_digest`. `line` has the options, the paths and the
/// digest of the input. `companion` is the path of a companion that is there, which is read; empty for none.
/// Empty, which no work has, where that fails.
std::string FinishedMark(const ReportLine& line, const std::string& companion,
                         const std::string& output_digest);

}  // namespace zuna_cli
