// Compares digit runs by value, without converting them to numbers.

#include "kit/numeric_string_compare.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace kit {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// Takes the run of digits at the front of `text` and returns it without its leading zeros.
std::string_view TakeNumber(std::string_view& text) {
  const auto end = std::find_if_not(text.begin(), text.end(), IsDigit);
  std::string_view digits = text.substr(0, static_cast<std::size_t>(end - text.begin()));
  text.remove_prefix(digits.size());
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
  return digits;
}

/// Below, equal to or above 0 as the number `a` is less than, equal to or greater than `b`.
int CompareNumbers(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
  return a.compare(b);
}

/// The same for whole texts, blind to leading zeros.
int CompareByValue(std::string_view a, std::string_view b) {
  while (!a.empty() && !b.empty()) {
    if (IsDigit(a.front()) && IsDigit(b.front())) {
      const std::string_view left = TakeNumber(a);
      const std::string_view right = TakeNumber(b);
      if (const int order = CompareNumbers(left, right); order != 0) return order;
    } else {
      const auto left = static_cast<unsigned char>(a.front());
      const auto right = static_cast<unsigned char>(b.front());
      if (left != right) return left < right ? -1 : 1;
      a.remove_prefix(1);
      b.remove_prefix(1);
    }
  }
  return static_cast<int>(!a.empty()) - static_cast<int>(!b.empty());
}

}  // namespace

bool NumericStringCompare::operator()(const std::string& a, const std::string& b) const {
  const int order = CompareByValue(a, b);
  return order != 0 ? order < 0 : a < b;
}

}  // namespace kit
