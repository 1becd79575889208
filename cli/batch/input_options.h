// The inputs of a command that takes many.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/batch/progress.h"
#include "cli/shared/context.h"
#include "toolkit/batch/inputs.h"

namespace zuna_cli {

/// What the options tell about the inputs and the work on them.
struct InputOptions {
  std::vector<std::string> paths;  ///< files and folders
  std::string files_from;          ///< a file with more of them; empty for none
  bool separated_by_nul = false;   ///< in that file
  bool recursive = false;
  bool fail_fast = false;
  std::optional<unsigned> workers;
  zuna_toolkit::Shard shard;
  ProgressForm progress = ProgressForm::kNone;  ///< besides a terminal, which gets it unasked
};

/// Adds "IN..." and the options for them.
void AddInputs(CLI::App& command, InputOptions& options);

/// Finds the inputs of all shards; `passed_over` is a folder of outputs, `companion` is read
/// besides a single input. Throws Failure
/// (kUsage) where none was named or standard input is given more than once, (kNothingMatched) where none was
/// found, and what reading the list of files throws.
std::vector<zuna_toolkit::Input> CollectInputs(const InputOptions& options, const Context& context,
                                               const std::string& passed_over = "",
                                               const std::optional<std::string>& companion = {});

/// Leaves out what belongs to other shards: `path_of` an element is the path of its input. What is wrong with
/// all inputs together is to be found before.
template <typename Element, typename PathOf>
void KeepShard(std::vector<Element>& elements, const zuna_toolkit::Shard& shard, PathOf path_of) {
  std::erase_if(elements,
                [&](const Element& element) { return !zuna_toolkit::IsInShard(path_of(element), shard); });
}

/// What commands without outputs read.
struct Reading {
  std::vector<zuna_toolkit::Input> inputs;  ///< of this shard alone
  Keys keys;
};

/// Finds the inputs and reads the keys. Throws as CollectInputs() and LoadKeys() do; where `json` says so,
/// the failure is told by TellInJson() before.
Reading PrepareReading(const InputOptions& options, const Context& context, bool json);

}  // namespace zuna_cli
