// How far a command is with its inputs.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace zuna_cli {

/// Where the progress is told.
enum class ProgressForm {
  kNone,
  kTerminal,  ///< a line on standard error that is written again and again
  kJson,      ///< a line of JSON on standard error, at most one a second and one at the end
};

/// Tells how many inputs are finished, how many a second, and how long the others will take.
class Progress {
 public:
  Progress(ProgressForm form, std::size_t total);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress() { Clear(); }

  /// Another input is finished.
  void Step();

  /// Removes the line from the terminal, so that something else can be written.
  void Clear();

 private:
  using Clock = std::chrono::steady_clock;

  std::string Text(double seconds) const;
  std::string Json(double seconds) const;

  ProgressForm form_;
  std::size_t total_;
  std::size_t finished_ = 0;
  bool is_shown_ = false;
  Clock::time_point begin_;
  Clock::time_point shown_;
};

}  // namespace zuna_cli
