// The longest common subsequence of two short sequences.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace zuna_toolkit {

/// The indexes in `a` and in `b` of the elements that both have in the same order, as many as possible. Time
/// and memory grow with (a.size() + 1) * (b.size() + 1), so the caller has to keep this small: 72 bytes for
/// each at most.
std::vector<std::pair<std::size_t, std::size_t>> LongestCommonSubsequence(const std::vector<unsigned>& a,
                                                                          const std::vector<unsigned>& b);

}  // namespace zuna_toolkit
