#pragma once

#include <string>

#include "kit/api.h"

namespace kit::path {

/// The extension of the last component of `path` with its leading point (".showdata"), or an empty string. A
/// name that only begins with a point (".profile") has none.
ZUNA_API std::string extension(const std::string& path);

/// `name` inside `dir`, with exactly one "/" between them. An absolute `name`, or an empty `dir`, gives
/// `name`.
ZUNA_API std::string Join(const std::string& dir, const std::string& name);

}  // namespace kit::path
