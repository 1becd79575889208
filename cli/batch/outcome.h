// What became of one input of a command.
#pragma once

#include <cstddef>
#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "cli/terminal/failure.h"
#include "toolkit/comparison/loss_text.h"

namespace zuna_cli {

/// How the work on an input ended.
enum class Status {
  kDone,
  kCurrent,  ///< it has the version that was asked for already
  kSkipped,  ///< passed over because that was asked for
  kFailed,
};

/// A line on standard error.
struct Message {
  bool is_loss = false;  ///< stays where only errors and losses are printed
  std::string line;      ///< for a terminal, with its line break
};

/// What became of one input, ready to be told: nothing of it needs memory any more.
struct Outcome {
  Status status = Status::kDone;
  std::size_t group = 0;  ///< which of Batch::done an input that is done belongs to
  std::vector<zuna_toolkit::LossKind> losses;
  bool is_negative = false;         ///< the answer about it is no
  std::string text;                 ///< for standard output
  std::vector<Message> messages;    ///< for standard error
  std::string report;               ///< for the report, with its line break; may be empty
  std::optional<Failure> failure;   ///< where it failed
  std::string input;                ///< the path of an input that failed; empty where its failure names it
  std::exception_ptr ends_command;  ///< what no other input should be tried after, such as a lack of memory
};

}  // namespace zuna_cli
