// The outputs of a command that makes one file of each input.
#include "cli/batch/output_options.h"

#include <sys/stat.h>

#include <filesystem>
#include <map>
#include <set>
#include <utility>

#include "cli/terminal/standard_streams.h"
#include "kit/file.h"
#include "kit/path.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Input;

/// Device and inode.
using FileId = std::pair<dev_t, ino_t>;

std::optional<FileId> IdOf(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  return FileId(status.st_dev, status.st_ino);
}

[[noreturn]] void Refuse(const std::string& problem, const std::string& remedy) {
  throw Failure(ErrorCode::kUsage, "command line", problem, remedy);
}

void RequireOneOutput(const OutputOptions& options, std::size_t inputs) {
  const int given =
      (options.file.empty() ? 0 : 1) + (options.folder.empty() ? 0 : 1) + (options.in_place ? 1 : 0);
  if (given != 1) Refuse("the outputs are not named", "give one of -o, --out-dir and --in-place");
  if (!options.file.empty() && inputs > 1) {
    Refuse("-o is for one input, and there are " + std::to_string(inputs), "give --out-dir or --in-place");
  }
  if (options.in_place && (options.force || options.skip_existing)) {
    Refuse("--in-place keeps the old files beside the new ones", "leave out --force and --skip-existing");
  }
  if (options.force && options.skip_existing)
    Refuse("--force and --skip-existing contradict each other", "give one of them");
}

/// The file itself, so that a link to it stays one.
std::string WithoutLinks(const std::string& path) {
  std::error_code error;
  const std::filesystem::path whole = std::filesystem::canonical(path, error);
  return error ? path : whole.string();
}

std::string OutputOf(const Input& input, const OutputOptions& options) {
  if (!options.file.empty()) return options.file;
  if (input.path == kStandardStream) Refuse("standard input has no name", "give -o");
  if (options.in_place) return WithoutLinks(input.path);
  return kit::path::Join(options.folder, input.relative);
}

void RequireDistinct(const std::vector<Job>& jobs) {
  std::map<std::string, const Job*> known;
  for (const Job& job : jobs) {
    const auto [found, is_new] = known.emplace(job.output, &job);
    if (is_new) continue;
    Refuse(found->second->input.path + " and " + job.input.path + " have the same output " + job.output,
           "name their folder instead, or convert them one after the other");
  }
}

/// A file that is to be read may not be replaced before.
void RequireNoInputs(const std::vector<Job>& jobs) {
  if (jobs.size() < 2) return;  // An output is compared with its own input before the work on it.
  std::set<FileId> inputs;
  for (const Job& job : jobs) {
    if (const auto id = IdOf(job.input.path)) inputs.insert(*id);
  }
  for (const Job& job : jobs) {
    const auto id = IdOf(job.output);
    if (!id || !inputs.contains(*id)) continue;
    throw Failure(ErrorCode::kOutputIsInput, job.output, "is an input as well", "give another output");
  }
}

}  // namespace

void AddOutputs(CLI::App& command, OutputOptions& options) {
  command.add_option("-o,--output", options.file, "The output for one input; - for standard output")
      ->type_name("OUT");
  command.add_option("--out-dir", options.folder, "The folder for the outputs; folders are made in it")
      ->type_name("DIR");
  command.add_flag("--in-place", options.in_place,
                   "Replace the inputs; each old file stays beside the new one as NAME.~N~");
  command.add_flag("--force", options.force, "Replace outputs that exist");
  command.add_flag("--skip-existing", options.skip_existing, "Pass over inputs whose output exists");
  command.add_flag("-n,--dry-run", options.dry_run, "Do everything but write");
  command.add_flag("--no-verify{false}", options.verify,
                   "Do not read the outputs back before they take their places");
}

std::vector<Job> PlanOutputs(const std::vector<Input>& inputs, const OutputOptions& options) {
  RequireOneOutput(options, inputs.size());
  std::vector<Job> jobs;
  jobs.reserve(inputs.size());
  for (const Input& input : inputs) jobs.push_back({input, OutputOf(input, options)});
  RequireDistinct(jobs);
  if (!options.in_place) RequireNoInputs(jobs);
  return jobs;
}

void MakeFolderOf(const std::string& output) {
  const std::filesystem::path folder = std::filesystem::path(output).parent_path();
  if (output == kStandardStream || folder.empty()) return;
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (!error) return;
  throw Failure(ErrorCode::kIo, output, "its folder cannot be made: " + error.message(),
                "check the path and its permissions");
}

void RemoveLeftovers(const std::vector<Job>& jobs) {
  std::set<std::string> folders;
  for (const Job& job : jobs) {
    if (job.output != kStandardStream) {
      folders.insert(std::filesystem::path(job.output).parent_path().string());
    }
  }
  for (const std::string& folder : folders) kit::RemoveLeftovers(folder.empty() ? "." : folder);
}

}  // namespace zuna_cli
