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
constexpr std::size_t kMostNames = 8;  // in a line about many

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

/// One failure for all inputs that fail because of one file.
Failure OfOneFile(const std::vector<FailedInput>& failed, const std::vector<std::size_t>& group) {
  const Failure& first = failed[group.front()].failure;
  if (group.size() == 1) return first;
  zuna_toolkit::ErrorParts parts = first.parts();
  std::string needed_by;
  for (const std::size_t number : group) {
    const std::string& input = failed[number].input;
    if (!input.empty() && input != parts.file) zuna_toolkit::AppendListed(needed_by, input);
  }
  if (!needed_by.empty()) parts.problem += " (needed by " + needed_by + ')';
  return {first.code(), std::move(parts)};
}

/// One failure for all files with the same problem.
Failure OfManyFiles(const std::vector<Failure>& failures, const std::vector<std::size_t>& group) {
  std::string names;
  for (std::size_t i = 0; i < std::min(group.size(), kMostNames); ++i) {
    zuna_toolkit::AppendListed(names, failures[group[i]].parts().file);
  }
  if (group.size() > kMostNames) names += " and " + std::to_string(group.size() - kMostNames) + " more";
  zuna_toolkit::ErrorParts parts = failures[group.front()].parts();
  parts.file = zuna_toolkit::Counted(group.size(), "file", "files");
  parts.problem += " (" + names + ')';
  return {failures[group.front()].code(), std::move(parts)};
}

}  // namespace

std::vector<Failure> FailuresToTell(const std::vector<FailedInput>& failed) {
  std::vector<Failure> failures;
  const Groups by_file = GroupsBy(failed, [](const FailedInput& one) {
    const zuna_toolkit::ErrorParts& parts = one.failure.parts();
    return std::tuple(one.failure.code(), parts.file, parts.problem);
  });
  for (const auto& group : by_file) failures.push_back(OfOneFile(failed, group));
  std::vector<Failure> told;
  const Groups by_problem = GroupsBy(failures, [](const Failure& failure) {
    return std::tuple(failure.code(), failure.parts().problem, failure.parts().remedy);
  });
  for (const auto& group : by_problem) {
    if (group.size() > kMostAlone) {
      told.push_back(OfManyFiles(failures, group));
    } else {
      for (const std::size_t number : group) told.push_back(failures[number]);
    }
  }
  return told;
}

}  // namespace zuna_cli
