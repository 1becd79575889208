// Directories and the names in them.

#pragma once

#include <string>
#include <vector>

#include "kit/api.h"

namespace kit {

/// The names of the entries of a directory, without "." and "..", sorted byte by byte.
/// Throws kit::IoError naming the directory when it cannot be read.
ZUNA_API std::vector<std::string> listdir(const std::string& dir);

namespace path {

/// The extension of the last component of `path` with its leading point (".showdata"), or an empty string. A
/// name that only begins with a point (".profile") has none.
ZUNA_API std::string extension(const std::string& path);

/// `name` inside `dir`, with exactly one "/" between them. An absolute `name`, or an empty `dir`, gives
/// `name`.
ZUNA_API std::string Join(const std::string& dir, const std::string& name);

}  // namespace path

}  // namespace kit
