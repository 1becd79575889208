// Pieces of the completion scripts.
#include "cli/completion/shell_text.h"

namespace zuna_cli {

std::string Quoted(std::string_view text) { return '\'' + Replaced(std::string(text), "'", "'\\''") + '\''; }

std::string Joined(const std::vector<std::string>& words, std::string_view separator) {
  std::string text;
  for (const std::string& word : words) {
    if (&word != &words.front()) text += separator;
    text += word;
  }
  return text;
}

std::string Replaced(std::string text, std::string_view name, std::string_view value) {
  for (std::size_t at = text.find(name); at != std::string::npos; at = text.find(name, at + value.size())) {
    text.replace(at, name.size(), value);
  }
  return text;
}

std::string ValuesText(const CompletionValues& values) {
  switch (values.kind) {
    case CompletionValues::Kind::kAnything:
      return "''";
    case CompletionValues::Kind::kFiles:
      return "files";
    case CompletionValues::Kind::kFolders:
      return "folders";
    case CompletionValues::Kind::kWords:
      return Quoted("words " + Joined(values.words, " "));
  }
  return "''";
}

std::string CommandPattern(const CompletionCommand& tool) {
  std::vector<std::string> patterns;
  for (const CompletionCommand* command : AllCommands(tool)) {
    for (const CompletionCommand& below : command->commands) {
      patterns.push_back(Quoted(command->name + ' ' + below.last_word));
    }
  }
  return Joined(patterns, " | ");
}

std::string OptionBranches(const CompletionCommand& command) {
  std::string text;
  for (const CompletionOption& option : command.options) {
    if (option.value.empty()) continue;
    std::vector<std::string> patterns;
    for (const std::string& spelling : option.spellings) {
      patterns.push_back(Quoted(command.name + ':' + spelling));
    }
    text += "    " + Joined(patterns, " | ") + ") values=" + ValuesText(option.values) + " ;;\n";
  }
  return text;
}

}  // namespace zuna_cli
