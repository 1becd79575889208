// The help of a command.
#include "cli/help/help_text.h"

#include <array>
#include <string_view>

#include "cli/help/command_tree.h"
#include "cli/help/examples.h"

namespace zuna_cli {

namespace {

constexpr std::size_t kWidth = 80;
constexpr std::size_t kIndent = 2;
constexpr std::size_t kDescriptions = 26;  // the column that descriptions begin in

constexpr std::string_view kAboutKeys =
    "The key and IV of encrypted files come from --key-file, or from the file that ZUNA_KEY_FILE names, with "
    "the lines \"key = HEX\" and \"iv = HEX\". Without one both are empty, which protects nothing. Only the "
    "owner should be able to read a key file (chmod 600).";

struct Meaning {
  std::string_view code;
  std::string_view text;
};

constexpr auto kExitCodes = std::to_array<Meaning>({
    {"0", "done"},
    {"1", "negative answer: no such song or code, or check found an error"},
    {"2", "wrong usage"},
    {"3", "refused, such as replacing a file without --force"},
    {"4", "bad or unsupported input"},
    {"5", "wrong key"},
    {"6", "input or output failed"},
    {"7", "some of several inputs failed, or rescue found something missing"},
    {"8", "nothing matched"},
    {"70", "internal error"},
    {"130", "interrupted"},
    {"141", "output pipe closed"},
});

/// Adds `words` to `text`, whose last line has `column` columns, in lines that begin at `indent`.
void AppendWrapped(std::string& text, std::string_view words, std::size_t column, std::size_t indent) {
  while (!words.empty()) {
    const std::string_view word = words.substr(0, words.find(' '));
    words.remove_prefix(std::min(words.size(), word.size() + 1));
    if (column + 1 + word.size() > kWidth && column > indent) {
      text += '\n';
      column = 0;
    }
    const std::size_t blanks = column < indent ? indent - column : (column == indent ? 0 : 1);
    text.append(blanks, ' ') += word;
    column += blanks + word.size();
  }
  text += '\n';
}

std::string Paragraph(std::string_view words) {
  std::string text;
  AppendWrapped(text, words, 0, 0);
  return text;
}

/// A name with its description beside it, or below it where the name is long.
std::string Entry(const std::string& name, std::string_view description) {
  std::string text = std::string(kIndent, ' ') + name;
  std::size_t column = text.size();
  if (column + kIndent > kDescriptions) {
    text += '\n';
    column = 0;
  }
  AppendWrapped(text, description, column, kDescriptions);
  return text;
}

std::string ValueText(const CLI::Option& option) {
  return IsFlag(option) ? "" : ' ' + option.get_type_name();
}

/// "-o, --output OUT"
std::string AllSpellings(const CLI::Option& option) {
  std::string text;
  for (const std::string& spelling : Spellings(option)) text += (text.empty() ? "" : ", ") + spelling;
  return text + ValueText(option);
}

std::string ArgumentText(const CLI::Option& argument) {
  return argument.get_name() + (IsRepeated(argument) ? "..." : "");
}

std::string UsageText(const CLI::App& command) {
  std::string words = FullName(command) + " [OPTIONS]";
  for (const CLI::Option* option : OptionsOf(command)) {
    if (option->get_required()) words += ' ' + Spellings(*option).front() + ValueText(*option);
  }
  for (const CLI::Option* argument : ArgumentsOf(command)) {
    const std::string text = ArgumentText(*argument);
    words += argument->get_required() ? ' ' + text : " [" + text + ']';
  }
  if (!CommandsOf(command).empty()) words += " COMMAND";
  std::string text = "Usage:";
  AppendWrapped(text, words, text.size(), text.size() + 1);
  return text;
}

/// A title with the entries below it; nothing without entries.
std::string Section(const std::string& title, const std::string& entries) {
  return entries.empty() ? "" : '\n' + title + ":\n" + entries;
}

std::string AboutExitCodes() {
  std::string entries;
  for (const Meaning& meaning : kExitCodes) {
    std::string code = std::string(kIndent, ' ') + std::string(meaning.code);
    code.resize(2 * kIndent + 3, ' ');
    (entries += code) += meaning.text;
    entries += '\n';
  }
  return Section("Exit codes", entries);
}

}  // namespace

std::string OptionText(const CLI::Option& option) { return Spellings(option).back() + ValueText(option); }

std::string HelpText(const CLI::App& command) {
  std::string arguments;
  std::string options;
  std::string commands;
  std::string examples;
  for (const CLI::Option* argument : ArgumentsOf(command)) {
    arguments += Entry(ArgumentText(*argument), argument->get_description());
  }
  for (const CLI::Option* option : OptionsOf(command)) {
    options += Entry(AllSpellings(*option), option->get_description());
  }
  for (const CLI::App* below : CommandsOf(command)) {
    commands += Entry(below->get_name(), below->get_description());
  }
  for (const std::string_view line : ExamplesOf(NameInTool(command))) {
    ((examples += std::string(kIndent, ' ')) += line) += '\n';
  }
  const std::string text = Paragraph(command.get_description()) + '\n' + UsageText(command) +
                           Section("Arguments", arguments) + Section("Options", options) +
                           Section("Commands", commands) + Section("Examples", examples);
  if (command.get_parent() == nullptr) return text + '\n' + Paragraph(kAboutKeys) + AboutExitCodes();
  return text + "\nKeys and exit codes are described by \"zuna-convert help\".\n";
}

}  // namespace zuna_cli
