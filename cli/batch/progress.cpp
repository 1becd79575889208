// How far a command is with its inputs.
#include "cli/batch/progress.h"

#include <unistd.h>

#include <algorithm>

#include "cli/terminal/columns.h"
#include "cli/terminal/standard_streams.h"
#include "kit/format.h"

namespace zuna_cli {

namespace {

using std::chrono::milliseconds;

/// "0:05", "1:02:03"
std::string Duration(double seconds) {
  constexpr double kLongest = 359999;  // 99:59:59
  const auto all = static_cast<unsigned>(std::clamp(seconds, 0.0, kLongest));
  if (all < 3600) return kit::format("%u:%02u", all / 60, all % 60);
  return kit::format("%u:%02u:%02u", all / 3600, all / 60 % 60, all % 60);
}

/// What fits into one line of the terminal, beside the cursor: a line that is broken could not be removed.
std::string Fitting(const std::string& text) {
  const std::size_t columns = TerminalColumns(STDERR_FILENO).value_or(text.size() + 1);
  return CutToColumns(text, std::max(columns, std::size_t{2}) - 1);
}

}  // namespace

Progress::Progress(ProgressForm form, std::size_t total)
    : form_(form), total_(total), begin_(Clock::now()), shown_(begin_) {}

void Progress::Step() {
  ++finished_;
  if (form_ == ProgressForm::kNone) return;
  const Clock::time_point now = Clock::now();
  const auto pause = form_ == ProgressForm::kJson ? milliseconds(1000) : milliseconds(100);
  const bool is_last = finished_ == total_;
  if (now - shown_ < pause && !(is_last && form_ == ProgressForm::kJson)) return;
  shown_ = now;
  const double seconds = std::chrono::duration<double>(now - begin_).count();
  if (form_ == ProgressForm::kJson) return PrintLine(Json(seconds));
  PrintLine("\r\033[K" + Fitting(Text(seconds)));
  is_shown_ = true;
}

void Progress::Clear() {
  if (is_shown_) PrintLine("\r\033[K");
  is_shown_ = false;
}

std::string Progress::Text(double seconds) const {
  const double rate = static_cast<double>(finished_) / std::max(seconds, 0.001);
  const double left = static_cast<double>(total_ - finished_) / std::max(rate, 0.001);
  return kit::format("%zu of %zu files, %.0f a second, %s left", finished_, total_, rate,
                     Duration(left).c_str());
}

std::string Progress::Json(double seconds) const {
  return kit::format("{\"finished\": %zu, \"total\": %zu, \"seconds\": %.1f}\n", finished_, total_, seconds);
}

}  // namespace zuna_cli
