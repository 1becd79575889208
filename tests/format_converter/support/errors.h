#pragma once

// What a test says about an exception beyond its message.

#include <ios>
#include <sstream>
#include <string>
#include <typeinfo>

#include "tests/support/bytes.h"

namespace zuna_test {

/// The message of what `action` throws, when that is an `Error` and not of a class derived from it.
template <typename Error, typename Action>
std::string ExactMessageOf(Action action) {
  try {
    action();
  } catch (const Error& error) {
    if (typeid(error) == typeid(Error)) return error.what();
    return std::string("(of a derived class) ") + error.what();
  }
  return "(nothing was thrown)";
}

/// What the failure of a standard stream says, whose text is the standard library's own.
inline std::string StreamFailureText() {
  std::istringstream is;
  is.exceptions(std::ios_base::failbit);
  return MessageOf<std::ios_base::failure>([&] { is.setstate(std::ios_base::failbit); });
}

}  // namespace zuna_test
