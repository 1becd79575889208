// The completion script for bash.
#include "cli/completion/scripts.h"
#include "cli/completion/shell_text.h"

namespace zuna_cli {

namespace {

// "=" stands alone among the words of bash.
constexpr std::string_view kBashScript =
    R"(# Completion of zuna-convert in bash, written by "zuna-convert completion bash".
_zuna_convert() {
  local current=${COMP_WORDS[COMP_CWORD]} command= option= options= values= word i
  for ((i = 1; i < COMP_CWORD; ++i)); do
    word=${COMP_WORDS[i]}
    if [[ -n $option ]]; then
      [[ $word == '=' ]] || option=
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
  [[ $current == '=' ]] && current=
  case "$command:$option" in
@BRANCHES@  esac
  [[ -z $option && $current == -* ]] && values="words $options"
  COMPREPLY=()
  local -a found=()
  case $values in
    files) found=(-f) ;;
    folders) found=(-d) ;;
    words*) found=(-W "${values#words}") ;;
    *) return ;;
  esac
  [[ $values == words* ]] || compopt -o filenames 2>/dev/null
  while IFS= read -r word; do COMPREPLY+=("$word"); done < <(compgen "${found[@]}" -- "$current")
}
complete -F _zuna_convert zuna-convert
)";

std::string BashBranch(const CompletionCommand& command) {
  std::vector<std::string> spellings;
  for (const CompletionOption& option : command.options) {
    spellings.insert(spellings.end(), option.spellings.begin(), option.spellings.end());
  }
  std::vector<std::string> below;
  for (const CompletionCommand& found : command.commands) below.push_back(found.last_word);
  const CompletionValues values =
      below.empty() ? command.argument : CompletionValues{CompletionValues::Kind::kWords, below};
  return "    " + Quoted(command.name + ':') + ") options=" + Quoted(Joined(spellings, " ")) +
         " values=" + ValuesText(values) + " ;;\n" + OptionBranches(command);
}

}  // namespace

std::string BashScript(const CompletionCommand& tool) {
  std::string branches;
  for (const CompletionCommand* command : AllCommands(tool)) branches += BashBranch(*command);
  std::string script =
      Replaced(std::string(kBashScript), "@WITH_VALUE@", Joined(OptionsWithValue(tool), " | "));
  script = Replaced(std::move(script), "@COMMANDS@", CommandPattern(tool));
  return Replaced(std::move(script), "@BRANCHES@", branches);
}

}  // namespace zuna_cli
