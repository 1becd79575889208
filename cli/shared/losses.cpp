// The losses of a conversion.
#include "cli/shared/losses.h"

#include "cli/shared/json_text.h"
#include "cli/terminal/text.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Difference;
using zuna_toolkit::DifferenceGroups;

}  // namespace

Losses::Losses(const zuna_toolkit::Document& before, const zuna_toolkit::Document& after, bool is_restored,
               bool keep_json)
    : is_up_(before.type().is_legacy()), is_restored_(is_restored) {
  const auto add = [&](const Difference& loss) { Add(loss, keep_json); };
  if (before.type().is_legacy() == after.type().is_legacy()) return;  // All current versions hold the same.
  if (is_up_) {
    LossesOfUp(before, after, add);
  } else {
    LossesOfDown(before, after, add);
  }
}

void Losses::Add(const Difference& loss, bool keep_json) {
  groups_.Add(loss);
  if (keep_json) json_ += (json_.empty() ? "{" : ", {") + DifferenceJson(loss) + "}";
  const std::string line = is_up_ ? zuna_toolkit::OwnLine(loss) : "";
  if (line.empty()) {
    grouped_lines_.Add(loss);
  } else {
    own_lines_.push_back({line, IsHarmless(loss)});
  }
}

bool Losses::IsHarmless(const Difference& loss) const {
  return zuna_toolkit::IsHarmless(loss) && (is_restored_ || !zuna_toolkit::IsInCompanion(loss.subject));
}

zuna_toolkit::LossKind Losses::KindOf(const DifferenceGroups::Group& group) const {
  const Difference& first = group.first;
  return {CodeText(first), first.subject, first.action, is_up_, IsHarmless(first), group.count};
}

std::vector<std::string> Losses::Lines(bool with_harmless) const {
  std::vector<std::string> lines;
  for (const Line& line : own_lines_) {
    if (with_harmless || !line.is_harmless) lines.push_back(line.text);
  }
  for (const DifferenceGroups::Group& group : grouped_lines_.groups()) {
    if (with_harmless || !IsHarmless(group.first))
      lines.push_back(zuna_toolkit::KindLine(KindOf(group), group.first));
  }
  return lines;
}

std::vector<std::string> Losses::Lines() const { return Lines(true); }

std::vector<std::string> Losses::HarmfulLines() const { return Lines(false); }

std::string Losses::HarmlessText() const {
  std::vector<zuna_toolkit::LossKind> kinds = Kinds();
  std::erase_if(kinds, [](const zuna_toolkit::LossKind& kind) { return !kind.is_harmless; });
  return zuna_toolkit::KindsText(kinds);
}

std::vector<zuna_toolkit::LossKind> Losses::Kinds() const {
  std::vector<zuna_toolkit::LossKind> kinds;
  for (const DifferenceGroups::Group& group : groups_.groups()) kinds.push_back(KindOf(group));
  return kinds;
}

}  // namespace zuna_cli
