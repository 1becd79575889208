// The outputs of a command that makes one file of each input.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "cli/shared/context.h"
#include "toolkit/batch/inputs.h"

namespace zuna_cli {

/// What the options tell about the outputs. Exactly one of `file`, `folder` and `in_place` is given.
struct OutputOptions {
  std::string file;    ///< for one input; "-" for standard output
  std::string folder;  ///< keeps the paths below the folders that were named
  bool in_place = false;
  bool force = false;
  bool skip_existing = false;
  bool dry_run = false;
  bool verify = true;  ///< read every output back before it takes its place
};

/// Adds the options.
void AddOutputs(CLI::App& command, OutputOptions& options);

/// An input and the path of its output, "-" for standard output.
struct Job {
  zuna_toolkit::Input input;
  std::string output;
  std::string same_as;  ///< an earlier input that is the same file and has the same output; empty for none
};

/// Where a companion of an input may be.
using CompanionPathOf = std::function<std::optional<std::string>(const zuna_toolkit::Input&)>;

/// The outputs of all inputs, in their order. Throws Failure (kUsage) where the options contradict each other
/// or do not fit the number of inputs, or two inputs that are different files have the same output, and
/// (kOutputIsInput) where an output is an input or, by `companion_of`, a companion of one.
std::vector<Job> PlanOutputs(const std::vector<zuna_toolkit::Input>& inputs, const OutputOptions& options,
                             const CompanionPathOf& companion_of);

/// Where the file at `path` is replaced: at that path, or where a link leads to, which stays one.
std::string InPlace(const std::string& path);

/// Removes what runs that were killed have left beside the outputs.
void RemoveLeftovers(const std::vector<Job>& jobs);

/// The folders of outputs that are not there yet when it is made. Those that are there and empty when it goes
/// are removed: all that was to be written there failed.
class MadeFolders {
 public:
  /// `shards` is how many runs share the outputs: what other machines need is left alone.
  MadeFolders(const std::vector<Job>& jobs, const OutputOptions& options, std::uint64_t shards);
  MadeFolders(const MadeFolders&) = delete;
  MadeFolders& operator=(const MadeFolders&) = delete;
  ~MadeFolders();

 private:
  std::set<std::string> missing_;  ///< a folder is before those in it
};

/// Makes the folder of an output. Throws Failure (kIo).
void MakeFolderOf(const std::string& output);

}  // namespace zuna_cli
