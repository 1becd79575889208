// The outputs of a command that makes one file of each input.
#include "cli/batch/output_options.h"

#include <unistd.h>

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "cli/batch/placing.h"
#include "cli/shared/context.h"
#include "cli/shared/file_id.h"
#include "cli/terminal/standard_streams.h"
#include "kit/file.h"
#include "kit/path.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Input;

[[noreturn]] void Refuse(const std::string& problem, const std::string& remedy) {
  throw Failure(ErrorCode::kUsage, "command line", problem, remedy);
}

void RequireOneOutput(const OutputOptions& options, std::size_t inputs) {
  const int given =
      (options.file.empty() ? 0 : 1) + (options.folder.empty() ? 0 : 1) + (options.in_place ? 1 : 0);
  if (given == 0) Refuse("the outputs are not named", "give one of -o, --out-dir and --in-place");
  if (given > 1) Refuse("the outputs are named twice", "give only one of -o, --out-dir and --in-place");
  if (!options.file.empty() && inputs > 1) {
    Refuse("-o is for one input, and there are " + std::to_string(inputs), "give --out-dir or --in-place");
  }
  if (options.in_place && (options.force || options.skip_existing)) {
    Refuse("--in-place keeps the old files beside the new ones", "leave out --force and --skip-existing");
  }
  if (options.force && options.skip_existing)
    Refuse("--force and --skip-existing contradict each other", "give one of them");
}

/// The file itself.
std::string WithoutLinks(const std::string& path) {
  if (!Exists(path)) return path;  // One look, where the other way takes one for each folder.
  std::error_code error;
  const std::filesystem::path whole = std::filesystem::canonical(path, error);
  return error ? path : whole.string();
}

bool IsLink(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_symlink(path, ignored);
}

std::string OutputOf(const Input& input, const OutputOptions& options) {
  if (!options.file.empty()) return options.file;
  if (input.path == kStandardStream) Refuse("standard input has no name", "give -o");
  if (options.in_place) return InPlace(input.path);
  return kit::path::Join(options.folder, input.relative);
}

/// Two inputs may have one output only where they are one file, which is worked on once: by its own name,
/// where its companion is looked for, and not by a link.
void FindSame(std::vector<Job>& jobs) {
  std::map<std::string, Job*> known;
  for (Job& job : jobs) {
    const auto [found, is_new] = known.emplace(WithoutLinks(job.output), &job);
    if (is_new) continue;
    Job& first = *found->second;
    if (WithoutLinks(job.input.path) == WithoutLinks(first.input.path)) {
      const bool takes_over = IsLink(first.input.path) && !IsLink(job.input.path);
      (takes_over ? first : job).same_as = (takes_over ? job : first).input.path;
      if (takes_over) found->second = &job;
      continue;
    }
    Refuse(first.input.path + " and " + job.input.path + " have the same output " + job.output,
           "name their folder instead, or convert them one after the other");
  }
}

/// A file that is to be read may not be replaced before.
void RequireNoneRead(const std::vector<Job>& jobs, const CompanionPathOf& companion_of) {
  if (jobs.size() < 2) return;  // An output is compared with what its own input needs before the work on it.
  std::vector<std::pair<FileId, const Job*>> there;
  for (const Job& job : jobs) {
    if (const auto id = IdOf(job.output)) there.emplace_back(*id, &job);
  }
  if (there.empty()) return;
  std::map<FileId, std::string> read;
  for (const Job& job : jobs) {
    if (const auto id = IdOf(job.input.path)) read.emplace(*id, "is an input as well");
  }
  for (const Job& job : jobs) {
    const auto path = companion_of ? companion_of(job.input) : std::nullopt;
    const auto id = path ? IdOf(*path) : std::nullopt;
    if (id) read.emplace(*id, "is the companion of " + job.input.path);
  }
  for (const auto& [id, job] : there) {
    const auto found = read.find(id);
    if (found == read.end()) continue;
    throw Failure(ErrorCode::kOutputIsInput, job->output, found->second, "give another output");
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

std::string InPlace(const std::string& path) { return IsLink(path) ? WithoutLinks(path) : path; }

std::vector<Job> PlanOutputs(const std::vector<Input>& inputs, const OutputOptions& options,
                             const CompanionPathOf& companion_of) {
  RequireOneOutput(options, inputs.size());
  std::vector<Job> jobs;
  jobs.reserve(inputs.size());
  if (Exists(options.folder)) RequireFolder(options.folder, "give a folder to --out-dir");
  for (const Input& input : inputs) jobs.push_back({input, OutputOf(input, options), ""});
  FindSame(jobs);
  if (!options.in_place) RequireNoneRead(jobs, companion_of);
  return jobs;
}

void MakeFolderOf(const std::string& output) {
  const std::filesystem::path folder = std::filesystem::path(output).parent_path();
  if (output == kStandardStream || folder.empty()) return;
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (!error) return;
  throw Failure(zuna_toolkit::CodeOfSystemError(error.value()), output,
                "its folder cannot be made: " + error.message(), "check the path and its permissions");
}

MadeFolders::MadeFolders(const std::vector<Job>& jobs, const OutputOptions& options, std::uint64_t shards) {
  if (options.folder.empty() || options.dry_run || shards > 1) return;
  for (const Job& job : jobs) {
    std::filesystem::path folder = std::filesystem::path(job.output).parent_path();
    while (!folder.empty() && !missing_.contains(folder.string()) && !Exists(folder.string())) {
      missing_.insert(folder.string());
      folder = folder.parent_path();
    }
  }
}

MadeFolders::~MadeFolders() {
  for (auto folder = missing_.rbegin(); folder != missing_.rend(); ++folder) ::rmdir(folder->c_str());
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
