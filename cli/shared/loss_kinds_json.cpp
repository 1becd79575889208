// Kinds of losses as JSON.
#include "cli/shared/loss_kinds_json.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <utility>

#include "toolkit/words.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Action;
using zuna_toolkit::Subject;

constexpr std::string_view kCode = "{\"code\": \"";
constexpr std::string_view kCount = "\", \"count\": ";
constexpr std::string_view kHarmless = ", \"harmless\": ";

using Kinds = std::map<std::string, std::pair<Subject, Action>, std::less<>>;

/// What codes stand for.
Kinds AllKinds() {
  Kinds kinds;
  for (int subject = 0; subject <= static_cast<int>(Subject::kOtherBytes); ++subject) {
    for (int action = 0; action <= static_cast<int>(Action::kRewritten); ++action) {
      zuna_toolkit::Difference difference;
      difference.subject = static_cast<Subject>(subject);
      difference.action = static_cast<Action>(action);
      kinds.emplace(CodeText(difference), std::pair(difference.subject, difference.action));
    }
  }
  return kinds;
}

/// Removes the beginning of `json` up to the end of `text`, and returns what was before `text`.
std::string_view TakeUntil(std::string_view& json, std::string_view text) {
  const std::size_t at = std::min(json.find(text), json.size());
  const std::string_view before = json.substr(0, at);
  json.remove_prefix(std::min(at + text.size(), json.size()));
  return before;
}

}  // namespace

std::string LossKindsJson(const std::vector<zuna_toolkit::LossKind>& kinds) {
  std::string list;
  for (const zuna_toolkit::LossKind& kind : kinds) {
    zuna_toolkit::AppendListed(list, std::string(kCode) + kind.code + std::string(kCount) +
                                         std::to_string(kind.count) + std::string(kHarmless) +
                                         (kind.is_harmless ? "true}" : "false}"));
  }
  return list;
}

std::vector<zuna_toolkit::LossKind> LossKindsOfJson(std::string_view json, bool is_up) {
  static const Kinds known = AllKinds();
  std::vector<zuna_toolkit::LossKind> kinds;
  json = json.substr(0, json.find(']'));
  while (json.find(kCode) != std::string_view::npos) {
    TakeUntil(json, kCode);
    const std::string_view code = TakeUntil(json, kCount);
    const std::string_view count = TakeUntil(json, kHarmless);
    const auto found = known.find(code);
    if (found == known.end()) continue;
    zuna_toolkit::LossKind kind{
        std::string(code), found->second.first, found->second.second, is_up, json.starts_with("true"), 0};
    std::from_chars(count.data(), count.data() + count.size(), kind.count);
    kinds.push_back(std::move(kind));
  }
  return kinds;
}

}  // namespace zuna_cli
