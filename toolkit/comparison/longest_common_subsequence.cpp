// The longest common subsequence of two short sequences.
#include "toolkit/comparison/internal/longest_common_subsequence.h"

#include <dtl/dtl.hpp>

namespace zuna_toolkit {

namespace {

using SequenceDiff = dtl::Diff<unsigned>;

// dtl does not free its array `fp` where memory runs out, and hides it. An explicit instantiation may name
// it.
template <long long* SequenceDiff::*kMember>
struct WorkingArray {
  friend long long* WorkingArrayOf(const SequenceDiff& diff) { return diff.*kMember; }
};
long long* WorkingArrayOf(const SequenceDiff& diff);
template struct WorkingArray<&SequenceDiff::fp>;

}  // namespace

std::vector<std::pair<std::size_t, std::size_t>> LongestCommonSubsequence(const std::vector<unsigned>& a,
                                                                          const std::vector<unsigned>& b) {
  std::vector<std::pair<std::size_t, std::size_t>> common;
  if (a.empty() || b.empty()) return common;
  SequenceDiff diff(a, b);
  try {
    diff.compose();
  } catch (...) {
    delete[] WorkingArrayOf(diff);
    throw;
  }
  for (const auto& [element, place] : diff.getSes().getSequence()) {
    if (place.type != dtl::SES_COMMON) continue;
    common.emplace_back(place.beforeIdx - 1, place.afterIdx - 1);  // dtl counts from 1
  }
  return common;
}

}  // namespace zuna_toolkit
