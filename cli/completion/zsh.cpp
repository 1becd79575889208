// The completion script for zsh.
#include "cli/completion/scripts.h"
#include "cli/completion/shell_text.h"

namespace zuna_cli {

namespace {

// The file is either sourced, or it is the body of the function that completes.
constexpr std::string_view kZshScript = R"(#compdef zuna-convert
# Completion of zuna-convert in zsh, written by "zuna-convert completion zsh".
_zuna-convert() {
  local command= option= values= word
  local -a options commands
  local -i i
  for ((i = 2; i < CURRENT; ++i)); do
    word=$words[i]
    if [[ -n $option ]]; then
      option=
      continue
    fi
    case $word in
      @WITH_VALUE@) option=$word ;;
      *)
        case "$command $word" in
          @COMMANDS@) command="${command:+$command }$word" ;;
        esac
        ;;
    esac
  done
  if [[ -z $option && $words[CURRENT] == --*=* ]]; then
    option=${words[CURRENT]%%=*}
    compset -P 1 '*='
  fi
  case "$command:$option" in
@BRANCHES@  esac
  if [[ -z $option && $words[CURRENT] == -* ]]; then
    _describe -o option options
  elif [[ -z $option && $#commands -gt 0 ]]; then
    _describe command commands
  else
    case $values in
      files) _files ;;
      folders) _files -/ ;;
      words*) compadd -- ${=values#words} ;;
    esac
  fi
}
if [[ $funcstack[1] == _zuna-convert ]]; then
  _zuna-convert "$@"
else
  compdef _zuna-convert zuna-convert
fi
)";

std::string ZshBranch(const CompletionCommand& command) {
  std::vector<std::string> options;
  for (const CompletionOption& option : command.options) {
    for (const std::string& spelling : option.spellings) {
      options.push_back(Quoted(spelling + ':' + option.description));
    }
  }
  std::vector<std::string> below;
  for (const CompletionCommand& found : command.commands) {
    below.push_back(Quoted(found.last_word + ':' + found.description));
  }
  return "    " + Quoted(command.name + ':') + ")\n      options=(\n        " +
         Joined(options, "\n        ") + "\n      )\n      commands=(\n        " +
         Joined(below, "\n        ") + "\n      )\n      values=" + ValuesText(command.argument) +
         "\n      ;;\n" + OptionBranches(command);
}

}  // namespace

std::string ZshScript(const CompletionCommand& tool) {
  std::string branches;
  for (const CompletionCommand* command : AllCommands(tool)) branches += ZshBranch(*command);
  std::string script =
      Replaced(std::string(kZshScript), "@WITH_VALUE@", Joined(OptionsWithValue(tool), " | "));
  script = Replaced(std::move(script), "@COMMANDS@", CommandPattern(tool));
  return Replaced(std::move(script), "@BRANCHES@", branches);
}

}  // namespace zuna_cli
