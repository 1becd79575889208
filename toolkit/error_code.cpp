// The table of all error codes.
#include "toolkit/error_code.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "toolkit/internal/file_errors.h"
#include "toolkit/internal/tool_errors.h"

namespace zuna_toolkit {

namespace {

/// All codes, in the order of ErrorCode.
constexpr auto kRows = [] {
  std::array<ErrorRow, kFileErrors.size() + kToolErrors.size()> rows{};
  std::copy(kToolErrors.begin(), kToolErrors.end(),
            std::copy(kFileErrors.begin(), kFileErrors.end(), rows.begin()));
  return rows;
}();

constexpr bool AreInOrder() {
  for (std::size_t i = 0; i < kRows.size(); ++i) {
    if (kRows[i].code != static_cast<ErrorCode>(i)) return false;
  }
  return kRows.back().code == ErrorCode::kClosedPipe;
}
static_assert(AreInOrder(), "a row stands at the number of its code");

constexpr std::array<Explanation, kRows.size()> kErrors = [] {
  std::array<Explanation, kRows.size()> explanations;
  std::transform(kRows.begin(), kRows.end(), explanations.begin(),
                 [](const ErrorRow& row) { return row.explanation; });
  return explanations;
}();

}  // namespace

std::string_view CodeText(ErrorCode code) { return kErrors.at(static_cast<std::size_t>(code)).code; }

ErrorKind KindOf(ErrorCode code) { return kRows.at(static_cast<std::size_t>(code)).kind; }

bool MayRescueHelp(ErrorCode code) { return kRows.at(static_cast<std::size_t>(code)).may_rescue_help; }

std::span<const Explanation> ErrorExplanations() { return kErrors; }

}  // namespace zuna_toolkit
