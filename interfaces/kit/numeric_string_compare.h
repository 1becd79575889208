// The order of song numbers.

#pragma once

#include <string>

#include "kit/api.h"

namespace kit {

/// The order of song numbers: a strict total order in which runs of decimal digits compare by their value,
/// however long, and all other bytes by their unsigned value. Texts that are equal in that sense but not the
/// same ("1" and "01") are ordered byte by byte, so that no two different texts are ever equivalent.
class ZUNA_API NumericStringCompare {
 public:
  /// Whether `a` comes before `b`.
  bool operator()(const std::string& a, const std::string& b) const;
};

}  // namespace kit
