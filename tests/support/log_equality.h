// Where two current logs differ.

#pragma once

#include <string>

#include "CL/change_log.h"

namespace zuna_test {

/// The first difference between two logs in everything that they hold but the version of the file that they
/// come from, as in: song "2", tempo scale 3. Floats are compared by their bits. Empty where there is none.
std::string FirstDifference(const CL::ChangeLog& a, const CL::ChangeLog& b);

}  // namespace zuna_test
