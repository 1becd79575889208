#pragma once

// How the legacy containers compare their lists.

#include <algorithm>

namespace version0 {

/// Whether each element of `a` equals the element of `b` at the same index. Additional elements of `b` are
/// ignored; a `b` that ends first is a difference. `equal` gets an element of `a` and one of `b`, in order,
/// up to the first difference.
template <typename List, typename Equal>
bool is_prefix_of(const List& a, const List& b, Equal equal) {
  return std::mismatch(a.begin(), a.end(), b.begin(), b.end(), equal).first == a.end();
}

}  // namespace version0
