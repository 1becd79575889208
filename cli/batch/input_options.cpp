// The inputs of a command that takes many.
#include "cli/batch/input_options.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <new>
#include <utility>

#include "cli/batch/report.h"
#include "cli/shared/input.h"
#include "cli/terminal/standard_streams.h"
#include "toolkit/words.h"

namespace zuna_cli {

namespace {

constexpr std::size_t kMaxList = std::size_t{1} << 28;  // bytes of a list of files

std::optional<std::uint64_t> ParseNumber(std::string_view text) {
  std::uint64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

/// "2/8"
std::optional<zuna_toolkit::Shard> ParseShard(const std::string& text) {
  const std::size_t slash = text.find('/');
  if (slash == std::string::npos) return std::nullopt;
  const auto index = ParseNumber(std::string_view(text).substr(0, slash));
  const auto count = ParseNumber(std::string_view(text).substr(slash + 1));
  if (!index || !count || *index == 0 || *index > *count) return std::nullopt;
  return zuna_toolkit::Shard{*index, *count};
}

std::string CheckShard(const std::string& text) {
  return ParseShard(text) ? "" : "a shard is I/N, such as 1/4, with I from 1 to N";
}

std::string CheckWorkers(const std::string& text) {
  constexpr std::uint64_t kMost = 1024;
  const auto number = ParseNumber(text);
  return number && *number > 0 && *number <= kMost ? "" : "the number of workers is 1 to 1024";
}

std::string CheckProgress(const std::string& text) { return text == "json" ? "" : "its value is json"; }

/// The paths of the list, without empty ones. Lines may be those of another system, with a byte order mark
/// and CR at their ends.
std::vector<std::string> ReadList(const InputOptions& options) {
  const std::vector<std::uint8_t> bytes = ReadInput(options.files_from, kMaxList);
  std::string_view text = zuna_toolkit::AsText(bytes);
  const char separator = options.separated_by_nul ? '\0' : '\n';
  if (!options.separated_by_nul) text = zuna_toolkit::WithoutByteOrderMark(text);
  std::vector<std::string> paths;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(separator), text.size());
    std::string_view path = text.substr(0, end);
    if (!options.separated_by_nul && path.ends_with('\r')) path.remove_suffix(1);
    if (path.find('\0') != std::string_view::npos) {
      throw Failure(ErrorCode::kUsage, InputName(options.files_from), "has NUL bytes between its names",
                    "give -0");
    }
    if (!path.empty()) paths.emplace_back(path);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return paths;
}

/// "a/b" for a file called "./a/b"; the name alone where its path leads out of the working folder.
std::string BelowWorkingFolder(const zuna_toolkit::Input& file) {
  const std::filesystem::path path = std::filesystem::path(file.path).lexically_normal();
  const bool leads_out = path.is_absolute() || path.empty() || *path.begin() == "..";
  return leads_out ? file.relative : path.string();
}

/// What the lines of a list name. Files keep their folders: a list is most often made of a tree.
void AddListed(const std::vector<std::string>& listed, const zuna_toolkit::FolderSearch& search,
               std::vector<zuna_toolkit::Input>& found) {
  for (const std::string& path : listed) {
    for (zuna_toolkit::Input& input : zuna_toolkit::FindInputs({path}, search)) {
      if (input.path == path) input.relative = BelowWorkingFolder(input);
      found.push_back(std::move(input));
    }
  }
}

std::string Where(const std::vector<std::string>& paths) {
  return paths.size() == 1 ? InputName(paths.front()) : "command line";
}

}  // namespace

void AddInputs(CLI::App& command, InputOptions& options) {
  command.add_option("IN", options.paths,
                     "Files, and folders whose shows and logs are taken; - for standard input");
  command.add_flag("-r,--recursive", options.recursive, "Take what is in the folders below them too");
  command.add_option("--files-from", options.files_from, "Take the lines of FILE too; - for standard input")
      ->type_name("FILE");
  command.add_flag("-0,--null", options.separated_by_nul, "NUL bytes separate the names in that file");
  command
      .add_option_function<std::string>(
          "--shard", [&options](const std::string& text) { options.shard = *ParseShard(text); },
          "Take part I of N of the inputs, by their paths")
      ->type_name("I/N")
      ->check(CLI::Validator(CheckShard, ""));
  command
      .add_option_function<std::string>(
          "-j,--jobs",
          [&options](const std::string& text) {
            options.workers = static_cast<unsigned>(*ParseNumber(text));
          },
          "Work on N inputs at a time; as many as processors unless given")
      ->type_name("N")
      ->check(CLI::Validator(CheckWorkers, ""));
  command.add_flag("--fail-fast", options.fail_fast, "Begin no further input once one has failed");
  command
      .add_option_function<std::string>(
          "--progress", [&options](const std::string&) { options.progress = ProgressForm::kJson; },
          "json: tell the progress on standard error as lines of JSON")
      ->type_name("json")
      ->check(CLI::Validator(CheckProgress, ""));
}

std::vector<zuna_toolkit::Input> CollectInputs(const InputOptions& options, const Context& context,
                                               const std::string& passed_over,
                                               const std::optional<std::string>& companion) {
  if (options.separated_by_nul && options.files_from.empty()) {
    throw Failure(ErrorCode::kUsage, "command line",
                  "-0 is about the list of --files-from, and there is none",
                  "give --files-from, or leave out -0");
  }
  if (options.paths.empty() && options.files_from.empty()) {
    throw Failure(ErrorCode::kUsage, "command line", "no input is given",
                  "give files, folders or --files-from");
  }
  std::vector<std::string> listed;
  if (!options.files_from.empty()) listed = ReadList(options);
  std::vector<std::string> paths = options.paths;
  paths.insert(paths.end(), listed.begin(), listed.end());
  std::vector<std::string> streams = paths;
  if (!options.files_from.empty()) streams.push_back(options.files_from);
  if (companion) streams.push_back(*companion);
  context.CheckInputs(streams);
  const zuna_toolkit::FolderSearch search{options.recursive, passed_over};
  std::vector<zuna_toolkit::Input> found = zuna_toolkit::FindInputs(options.paths, search);
  AddListed(listed, search, found);
  if (companion && found.size() > 1) {
    throw Failure(ErrorCode::kUsage, "command line",
                  "--companion is for one input, and there are " + std::to_string(found.size()),
                  "give --companions DIR");
  }
  if (!found.empty()) return found;
  if (paths.empty()) {
    throw Failure(ErrorCode::kNothingMatched, InputName(options.files_from), "names no file",
                  "give a list with a file in each line");
  }
  throw Failure(ErrorCode::kNothingMatched, Where(paths),
                "has no show and no log in a file whose name ends in \".showdata\" or \".logdata\"",
                "give other files or folders, or -r for the folders below");
}

Reading PrepareReading(const InputOptions& options, const Context& context, bool json) try {
  std::vector<zuna_toolkit::Input> inputs = CollectInputs(options, context);
  KeepShard(inputs, options.shard,
            [](const zuna_toolkit::Input& input) -> const std::string& { return input.path; });
  return {std::move(inputs), context.ReadKeys()};
} catch (const std::bad_alloc&) {
  throw;
} catch (...) {
  if (json) TellInJson(CurrentFailure());
  throw;
}

}  // namespace zuna_cli
