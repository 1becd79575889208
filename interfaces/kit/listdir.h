#pragma once

#include <string>
#include <vector>

#include "kit/api.h"

namespace kit {

/// The names of the entries of a directory, without "." and "..", sorted byte by byte.
/// Throws kit::IoError naming the directory when it cannot be read.
ZUNA_API std::vector<std::string> listdir(const std::string& dir);

}  // namespace kit
