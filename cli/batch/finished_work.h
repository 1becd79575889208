// What a report says was finished.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "cli/batch/output_options.h"
#include "cli/batch/report.h"

namespace zuna_cli {

/// The work that a report has as finished. Each piece has two marks: FinishedMark() of all that it depends
/// on besides its companion, and WrittenMark() of what was written.
class FinishedWork {
 public:
  /// What the report tells of a piece besides its marks.
  struct Piece {
    std::string options;           ///< the command, and what changes its result
    std::string companion;         ///< the path of the companion that was read; empty for none
    std::string companion_digest;  ///< SHA-256 of its bytes then
    std::string loss_kinds;        ///< for LossKindsOfJson()
  };

  /// None.
  FinishedWork() = default;
  /// What the report at `path` has; nothing where there is no regular file. A line that was cut off counts
  /// for nothing. Throws kit::IoError.
  explicit FinishedWork(const std::string& path);

  bool empty() const { return marks_.empty(); }
  bool Contains(const std::string& mark) const { return marks_.contains(mark); }
  /// What a line of the report tells of its piece.
  static Piece PieceOf(std::string_view line);
  /// The last piece with this mark; null for none.
  const Piece* Find(const std::string& mark) const;
  /// Whether the last line about the input at `path` is not one of finished work.
  bool IsUnfinished(const std::string& path) const;
  /// Whether the last line about the input at `path` is one of a failure.
  bool HasFailed(const std::string& path) const;
  /// How the input at `path` ended for `command` by its last line: kDone where nothing was left to do, or
  /// kFailed; nothing where no line tells.
  std::optional<Status> EarlierStatus(const std::string& path, const std::string& command) const;
  /// Whether the last line about the input at `path` says that its content `digest` needs nothing.
  bool IsCurrent(const std::string& path, const std::string& digest) const;
  /// The line about finished work, where the last line about the output with the mark `written` says that it
  /// was begun; otherwise empty.
  std::string DoneLine(const std::string& written) const;

 private:
  /// The last line about an input.
  struct Last {
    bool is_finished = false;
    bool is_failed = false;
    std::shared_ptr<const Piece> piece;
  };

  void Take(std::string_view line);
  void TakeCurrent(const std::string& path, std::string_view line);
  /// That of the input at `path`; null for none.
  const Last* LastOf(const std::string& path) const;

  std::map<std::string, std::shared_ptr<const Piece>, std::less<>> marks_;
  std::map<std::string, Last, std::less<>> last_;            ///< by absolute path
  std::map<std::string, std::string, std::less<>> current_;  ///< digests of what needs nothing, likewise
  /// Lines about outputs that were begun, and have no later line of finished work, by their marks: these do
  /// not depend on the working folder, as the paths in the lines do.
  std::map<std::string, std::string, std::less<>> begun_;
};

/// SHA-256 of the regular file at `path`; empty where there is none that can be read.
std::string DigestOfFile(const std::string& path);

/// The mark of an output at the path `output` that has the content `digest`, made of the input at `path`. It
/// is the same for all spellings of these paths from the working folder, as FinishedMark() is.
std::string WrittenMark(const std::string& path, const std::string& output, const std::string& digest);

/// The mark of work whose output has the content `output_digest`. `line` has the options, the paths and the
/// digest of the input. What is about companions and about losses that may be is no part of it: that is for
/// work that is left.
std::string FinishedMark(const ReportLine& line, const std::string& output_digest);

/// Whether the companion that a piece of work was done with is as it was. The report may have its path from
/// another working folder, so it may be at `path` as well, where this run finds it; empty for nowhere. Where
/// the command line names the companion, the one at `path` alone counts, also in place of an option that
/// stood in for one.
bool HasSameCompanion(const FinishedWork::Piece& piece, const std::string& path, bool is_named);

/// Whether `piece` was made by `command`, with any further options.
bool IsOfCommand(const FinishedWork::Piece& piece, const std::string& command);

}  // namespace zuna_cli
