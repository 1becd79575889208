// The completion script for fish.
#include "cli/completion/scripts.h"
#include "cli/completion/shell_text.h"

namespace zuna_cli {

namespace {

constexpr std::string_view kFishScript =
    R"(# Completion of zuna-convert in fish, written by "zuna-convert completion fish".
function __zuna_convert_at --description 'Whether the command line names this command'
    set -l command ''
    set -l option ''
    set -l words (commandline -opc)
    set -e words[1]
    for word in $words
        if test -n "$option"
            set option ''
            continue
        end
        switch $word
            case @WITH_VALUE@
                set option $word
            case '*'
                switch "$command $word"
                    case @COMMANDS@
                        set command (string trim -- "$command $word")
                end
        end
    end
    test "$command" = "$argv[1]"
end
complete -c zuna-convert -f
)";

/// In single quotes, where fish reads "\\" and "\'".
std::string FishQuoted(std::string_view text) {
  return '\'' + Replaced(Replaced(std::string(text), "\\", "\\\\"), "'", "\\'") + '\'';
}

/// The part of a rule that says what may follow.
std::string Offered(const CompletionValues& values) {
  switch (values.kind) {
    case CompletionValues::Kind::kAnything:
      return "";
    case CompletionValues::Kind::kFiles:
      return " -F";
    case CompletionValues::Kind::kFolders:
      return " -a '(__fish_complete_directories)'";
    case CompletionValues::Kind::kWords:
      return " -a " + FishQuoted(Joined(values.words, " "));
  }
  return "";
}

std::string FishOption(const CompletionOption& option) {
  std::string text;
  for (const std::string& spelling : option.spellings) {
    const bool is_long = spelling.starts_with("--");
    text += (is_long ? " -l " : " -s ") + spelling.substr(is_long ? 2 : 1);
  }
  const bool takes_files = option.values.kind == CompletionValues::Kind::kFiles;
  if (!option.value.empty()) text += (takes_files ? " -r" : " -x") + Offered(option.values);
  return text + " -d " + FishQuoted(option.description);
}

std::string Rules(const CompletionCommand& command) {
  const std::string rule =
      "complete -c zuna-convert -n " + FishQuoted("__zuna_convert_at " + FishQuoted(command.name));
  std::string text;
  for (const CompletionOption& option : command.options) text += rule + FishOption(option) + '\n';
  if (command.has_argument) text += rule + Offered(command.argument) + '\n';
  for (const CompletionCommand& below : command.commands) {
    text += rule + " -a " + below.last_word + " -d " + FishQuoted(below.description) + '\n';
  }
  return text;
}

}  // namespace

std::string FishScript(const CompletionCommand& tool) {
  std::string script =
      Replaced(std::string(kFishScript), "@WITH_VALUE@", Joined(OptionsWithValue(tool), " "));
  script = Replaced(std::move(script), "@COMMANDS@", Replaced(CommandPattern(tool), " | ", " "));
  for (const CompletionCommand* command : AllCommands(tool)) script += Rules(*command);
  return script;
}

}  // namespace zuna_cli
