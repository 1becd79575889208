// Whether an output holds what it should.
#include "cli/batch/verification.h"

#include "toolkit/comparison/comparison.h"

namespace zuna_cli {

namespace {

/// The model of a legacy document; null for another one.
const version0::ShowData* ModelOf(const zuna_toolkit::LegacyShow* legacy) {
  return legacy != nullptr ? &legacy->show : nullptr;
}

const version0::ChangeLogV0* ModelOf(const zuna_toolkit::LegacyLog* legacy) {
  return legacy != nullptr ? &legacy->log : nullptr;
}

/// A comparison of legacy models passes over what only the second one has.
template <typename Legacy>
bool HoldTheSameLegacy(const zuna_toolkit::Document& a, const zuna_toolkit::Document& b) {
  const auto* first = ModelOf(a.As<Legacy>());
  const auto* second = ModelOf(b.As<Legacy>());
  return first != nullptr && second != nullptr && *first == *second && *second == *first;
}

}  // namespace

bool HoldTheSame(const zuna_toolkit::Document& a, const zuna_toolkit::Document& b) {
  // This takes no memory, as a comparison in the current form does. A value that is no number is not its own
  // equal here, but is there.
  if (HoldTheSameLegacy<zuna_toolkit::LegacyShow>(a, b)) return true;
  if (HoldTheSameLegacy<zuna_toolkit::LegacyLog>(a, b)) return true;
  bool is_same = true;
  zuna_toolkit::Compare(a, b, [&](const zuna_toolkit::Difference&) { is_same = false; });
  return is_same;
}

}  // namespace zuna_cli
