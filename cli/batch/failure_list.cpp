// The failures that close a command on many inputs.
#include "cli/batch/failure_list.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <tuple>

#include "toolkit/words.h"

namespace zuna_cli {

namespace {

constexpr std::size_t kMostAlone = 3;  // files with the same problem that have lines of their own
constexpr std::size_t kMostNames = 5;  // in a line about many

using Groups = std::vector<std::vector<std::size_t>>;

/// The numbers of the elements with the same key, in the order of the first one of each group.
template <typename Element, typename KeyOf>
Groups GroupsBy(const std::vector<Element>& elements, KeyOf key_of) {
  Groups groups;
  std::map<decltype(key_of(elements.front())), std::size_t> known;
  for (std::size_t i = 0; i < elements.size(); ++i) {
    const auto [found, is_new] = known.emplace(key_of(elements[i]), groups.size());
    if (is_new) groups.emplace_back();
    groups[found->second].push_back(i);
  }
  return groups;
}

/// A file at fault, and what fails because of it.
struct Cause {
  const Failure* failure;
  std::vector<std::string> needed_by;  ///< other inputs
};

/// Whether the file itself cannot be read. A companion need not be encrypted, so the same damage has other
/// words there.
bool IsUnreadable(const Failure& failure) {
  return failure.kind() == zuna_toolkit::ErrorKind::kBadInput &&
         failure.code() != ErrorCode::kWrongCompanion && !failure.parts().file.empty();
}

/// Whether it is about the input, and not about its companion.
bool IsOwn(const FailedInput& failed) {
  return failed.input.empty() || failed.input == failed.failure.parts().file;
}

/// One cause for all inputs that fail because of one file.
Cause OfOneFile(const std::vector<FailedInput>& failed, const std::vector<std::size_t>& group) {
  const auto own =
      std::find_if(group.begin(), group.end(), [&](auto number) { return IsOwn(failed[number]); });
  Cause cause{&failed[own == group.end() ? group.front() : *own].failure, {}};
  if (group.size() == 1) return cause;
  for (const std::size_t number : group) {
    if (!IsOwn(failed[number])) cause.needed_by.push_back(failed[number].input);
  }
  return cause;
}

/// "a, b and 3 more"
std::string NamesText(const std::vector<std::string>& names) {
  std::string text;
  for (std::size_t i = 0; i < std::min(names.size(), kMostNames); ++i) {
    zuna_toolkit::AppendListed(text, names[i]);
  }
  if (names.size() > kMostNames) text += " and " + std::to_string(names.size() - kMostNames) + " more";
  return text;
}

/// The file at fault with what fails because of it: "a.showdata (needed by a.logdata)".
std::string NameText(const Cause& cause) {
  const std::string& file = cause.failure->parts().file;
  return cause.needed_by.empty() ? file : file + " (needed by " + NamesText(cause.needed_by) + ')';
}

Failure Told(const Cause& cause) {
  if (cause.needed_by.empty()) return *cause.failure;
  zuna_toolkit::ErrorParts parts = cause.failure->parts();
  parts.problem += " (needed by " + NamesText(cause.needed_by) + ')';
  return {cause.failure->code(), std::move(parts)};
}

/// One failure for all files with the same problem.
Failure OfManyFiles(const std::vector<Cause>& causes, const std::vector<std::size_t>& group) {
  const Failure& first = *causes[group.front()].failure;
  std::vector<std::string> names;
  names.reserve(group.size());
  for (const std::size_t number : group) names.push_back(NameText(causes[number]));
  zuna_toolkit::ErrorParts parts = first.parts();
  parts.file = zuna_toolkit::Counted(group.size(), "file", "files");
  parts.problem = first.common_problem() + " (" + NamesText(names) + ')';
  return {first.code(), std::move(parts)};
}

}  // namespace

std::vector<Failure> FailuresToTell(const std::vector<FailedInput>& failed) {
  std::vector<Cause> causes;
  const Groups by_file = GroupsBy(failed, [](const FailedInput& one) {
    const zuna_toolkit::ErrorParts& parts = one.failure.parts();
    if (IsUnreadable(one.failure)) return std::tuple(ErrorCode::kBadContent, parts.file, std::string());
    return std::tuple(one.failure.code(), parts.file, parts.problem);
  });
  for (const auto& group : by_file) causes.push_back(OfOneFile(failed, group));
  std::vector<Failure> told;
  const Groups by_problem = GroupsBy(causes, [](const Cause& cause) {
    return std::tuple(cause.failure->code(), cause.failure->common_problem(), cause.failure->parts().remedy);
  });
  for (const auto& group : by_problem) {
    if (group.size() > kMostAlone) {
      told.push_back(OfManyFiles(causes, group));
    } else {
      for (const std::size_t number : group) told.push_back(Told(causes[number]));
    }
  }
  return told;
}

}  // namespace zuna_cli
