// The inputs of a command that takes many.
#include "cli/batch/input_options.h"

#include <algorithm>
#include <charconv>

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

/// The paths of the list, without empty ones.
std::vector<std::string> ReadList(const InputOptions& options) {
  const std::vector<std::uint8_t> bytes = ReadInput(options.files_from, kMaxList);
  std::string_view text = zuna_toolkit::AsText(bytes);
  const char separator = options.separated_by_nul ? '\0' : '\n';
  std::vector<std::string> paths;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(separator), text.size());
    if (end > 0) paths.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return paths;
}

std::vector<std::string> AllPaths(const InputOptions& options) {
  std::vector<std::string> paths = options.paths;
  if (options.files_from.empty()) return paths;
  std::vector<std::string> listed = ReadList(options);
  std::move(listed.begin(), listed.end(), std::back_inserter(paths));
  return paths;
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
  const std::vector<std::string> paths = AllPaths(options);
  if (paths.empty() && options.files_from.empty()) {
    throw Failure(ErrorCode::kUsage, "command line", "no input is given",
                  "give files, folders or --files-from");
  }
  std::vector<std::string> streams = paths;
  if (!options.files_from.empty()) streams.push_back(options.files_from);
  if (companion) streams.push_back(*companion);
  context.CheckInputs(streams);
  std::vector<zuna_toolkit::Input> found = zuna_toolkit::FindInputs(paths, {options.recursive, passed_over});
  if (companion && found.size() > 1) {
    throw Failure(ErrorCode::kUsage, "command line",
                  "--companion is for one input, and there are " + std::to_string(found.size()),
                  "give --companions DIR");
  }
  if (!found.empty()) return found;
  throw Failure(ErrorCode::kNothingMatched, Where(paths),
                "has no show and no log in a file whose name ends in \".showdata\" or \".logdata\"",
                "give other files or folders, or -r for the folders below");
}

std::vector<zuna_toolkit::Input> CollectShard(const InputOptions& options, const Context& context) {
  std::vector<zuna_toolkit::Input> inputs = CollectInputs(options, context);
  KeepShard(inputs, options.shard,
            [](const zuna_toolkit::Input& input) -> const std::string& { return input.path; });
  return inputs;
}

}  // namespace zuna_cli
