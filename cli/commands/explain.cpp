// zuna-convert explain
#include <unistd.h>

#include <memory>
#include <sstream>
#include <vector>

#include "cli/help/codes.h"
#include "cli/shared/context.h"
#include "cli/terminal/columns.h"
#include "cli/terminal/table.h"
#include "cli/terminal/text.h"
#include "kit/nearest.h"
#include "toolkit/words.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Explanation;

struct ExplainOptions {
  std::vector<std::string> codes;
  bool json = false;
};

std::vector<std::string> CommandLines(const Explanation& explanation) {
  std::istringstream lines{std::string(explanation.commands)};
  std::vector<std::string> commands;
  for (std::string line; std::getline(lines, line);) commands.push_back(line);
  return commands;
}

std::string Json(const CodeGroup& group, const Explanation& explanation) {
  std::string commands;
  for (const std::string& command : CommandLines(explanation)) {
    zuna_toolkit::AppendListed(commands, JsonString(command));
  }
  return "{\"code\": " + JsonString(explanation.code) + ", \"kind\": " + JsonString(group.kind) +
         ", \"meaning\": " + JsonString(explanation.meaning) +
         ", \"cause\": " + JsonString(explanation.cause) + ", \"remedy\": " + JsonString(explanation.remedy) +
         ", \"commands\": [" + commands + "]}";
}

std::string Text(const CodeGroup& group, const Explanation& explanation) {
  std::string text = std::string(explanation.code) + " (" + std::string(group.kind) +
                     "): " + std::string(explanation.meaning) + "\nWhy: " + std::string(explanation.cause) +
                     "\nWhat to do: " + std::string(explanation.remedy);
  for (const std::string& command : CommandLines(explanation)) text += "\n  " + command;
  return text;
}

/// What `code` means, in every kind that has it; empty where none has.
std::string Explained(const std::string& code, bool json) {
  std::string text;
  for (const CodeGroup& group : CodeGroups()) {
    for (const Explanation& explanation : group.codes) {
      if (explanation.code != code) continue;
      text += (json ? Json(group, explanation) : Text(group, explanation)) + '\n';
    }
  }
  return text;
}

/// Throws Failure (kCodeNotFound) after the codes that are there.
void WriteExplained(const ExplainOptions& options) {
  std::string text;
  std::string unknown;
  for (const std::string& code : options.codes) {
    const std::string explained = Explained(code, options.json);
    if (explained.empty() && unknown.empty()) unknown = code;
    if (!text.empty() && !explained.empty() && !options.json) text += '\n';
    text += explained;
  }
  WriteStandardOutput(text);
  if (unknown.empty()) return;
  throw Failure(ErrorCode::kCodeNotFound, "explain",
                "there is no code \"" + unknown + '"' + kit::Suggestion(unknown, AllCodes()),
                "zuna-convert explain lists all");
}

std::string ListText() {
  const std::vector<CodeGroup> groups = CodeGroups();
  const auto row = [](const Explanation& explanation) {
    return Table::Row{std::string(explanation.code), std::string(explanation.meaning)};
  };
  Table table("<<", TerminalColumns(STDOUT_FILENO));
  for (const CodeGroup& group : groups) {
    for (const Explanation& explanation : group.codes) table.Fit(row(explanation));
  }
  std::string text;
  for (const CodeGroup& group : groups) {
    text += std::string(text.empty() ? "" : "\n") + std::string(group.title) + ":\n";
    for (const Explanation& explanation : group.codes) text += table.Line(row(explanation));
  }
  return text;
}

std::string ListJson() {
  std::string text;
  for (const CodeGroup& group : CodeGroups()) {
    for (const Explanation& explanation : group.codes) {
      text += (text.empty() ? "[" : ",\n ") + Json(group, explanation);
    }
  }
  return text + "]\n";
}

void RunExplain(const ExplainOptions& options) {
  if (options.codes.empty()) {
    WriteStandardOutput(options.json ? ListJson() : ListText());
  } else {
    WriteExplained(options);
  }
}

}  // namespace

void AddExplainCommand(CLI::App& app, Context& context) {
  CLI::App* command = app.add_subcommand("explain", "Tell what a code means, and what to do about it");
  AddSharedOptions(*command, context);
  const auto options = std::make_shared<ExplainOptions>();
  command->add_option("CODE", options->codes, "Codes, such as wrong-key; all codes are listed unless given");
  command->add_flag("--json", options->json, "Write JSON: an object for each code, an array for all");
  context.SetWork(*command, [options] { RunExplain(*options); });
}

}  // namespace zuna_cli
