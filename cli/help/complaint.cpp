// What is wrong with a command line.
#include "cli/help/complaint.h"

#include <algorithm>

#include "cli/help/command_tree.h"
#include "cli/help/help_text.h"
#include "kit/nearest.h"

namespace zuna_cli {

namespace {

std::string WhereToRead(const CLI::App& command) { return "see " + FullName(command) + " --help"; }

/// The first of the options and arguments of a command that `is_meant`.
template <typename IsMeant>
const CLI::Option* Find(const CLI::App& command, IsMeant is_meant) {
  std::vector<const CLI::Option*> all = AllOptionsOf(command);
  for (const CLI::Option* argument : ArgumentsOf(command)) all.push_back(argument);
  const auto found =
      std::find_if(all.begin(), all.end(), [&](const CLI::Option* option) { return is_meant(*option); });
  return found == all.end() ? nullptr : *found;
}

std::string NotKnown(const std::string& word, const std::vector<std::string>& known) {
  return '"' + word + "\" is not known here" + kit::Suggestion(word, known);
}

std::string UnknownOption(const CLI::App& command, const std::string& word) {
  std::vector<std::string> known;
  for (const CLI::Option* option : AllOptionsOf(command)) {
    for (const std::string& spelling : Spellings(*option)) known.push_back(spelling);
  }
  return NotKnown(word.substr(0, word.find('=')), known);
}

std::string UnknownCommandText(const CLI::App& parent, const std::string& word) {
  std::vector<std::string> known;
  for (const CLI::App* command : CommandsOf(parent)) known.push_back(command->get_name());
  return NotKnown(word, known);
}

bool IsOption(const std::string& word) { return word.size() > 1 && word.front() == '-'; }

/// What is wrong where the parser did not know what to do with `words`. Nothing where they are arguments.
std::string UnknownWord(const CLI::App& command, const std::vector<std::string>& words) {
  if (!CommandsOf(command).empty() && !IsOption(words.front())) {
    return UnknownCommandText(command, words.front());
  }
  const auto end = std::find(words.begin(), words.end(), "--");  // what follows is no option
  const auto option = std::find_if(words.begin(), end, IsOption);
  return option == end ? "" : UnknownOption(command, *option);
}

std::string MissingPart(const CLI::App& command) {
  const auto is_missing = [](const CLI::Option& option) {
    return option.get_required() && option.count() == 0;
  };
  const CLI::Option* missing = Find(command, is_missing);
  if (missing == nullptr) return "a command is missing";
  return (missing->get_positional() ? missing->get_name() : OptionText(*missing)) + " is missing";
}

/// What is wrong where an option was given too often or, as the last word, without its value.
std::string WrongCount(const CLI::App& command, const std::string& last_word) {
  const auto is_repeated = [](const CLI::Option& option) {
    return !IsFlag(option) && option.count() > static_cast<std::size_t>(option.get_items_expected_max());
  };
  const CLI::Option* repeated = Find(command, is_repeated);
  if (repeated == nullptr) return last_word + " has no value";
  return Spellings(*repeated).back() + " is given " + std::to_string(repeated->count()) + " times";
}

/// What is wrong where a flag has a value.
std::string FlagWithValue(const CLI::App& command, const CLI::ParseError& error) {
  const auto has_value = [](const CLI::Option& option) {
    return IsFlag(option) && option.count() > 0 && option.results().back() != "true";
  };
  const CLI::Option* flag = Find(command, has_value);
  return flag == nullptr ? error.what() : Spellings(*flag).back() + " takes no value";
}

/// What is wrong where words are missing, or there are too many.
std::string WrongWords(const CLI::App& command, const std::vector<std::string>& unknown, bool is_short) {
  if (!unknown.empty()) {
    std::string text = UnknownWord(command, unknown);
    if (!text.empty()) return text;
    if (!is_short) return "unexpected argument \"" + unknown.front() + '"';
  }
  return MissingPart(command);
}

std::string Problem(const CLI::App& root, const CLI::App& command, const CLI::ParseError& error,
                    const std::string& last_word) {
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) return WrongCount(command, last_word);
  if (dynamic_cast<const CLI::ConversionError*>(&error) != nullptr) {
    return FlagWithValue(command, error);
  }
  if (dynamic_cast<const CLI::ValidationError*>(&error) != nullptr) return error.what();  // words of our own
  const bool is_short = dynamic_cast<const CLI::RequiredError*>(&error) != nullptr;
  return WrongWords(command, root.remaining(true), is_short);
}

}  // namespace

Failure UnknownCommand(const CLI::App& parent, const std::string& word) {
  return {ErrorCode::kUsage, "command line", UnknownCommandText(parent, word), WhereToRead(parent)};
}

Failure Complaint(const CLI::App& root, const CLI::ParseError& error, const std::string& last_word) {
  const CLI::App& command = NamedCommand(root);
  return {ErrorCode::kUsage, "command line", Problem(root, command, error, last_word), WhereToRead(command)};
}

}  // namespace zuna_cli
