#pragma once

#include <string>

#include "platform/security/secret.h"

namespace zuna_security {

/// Replaces the file at `path`, or creates it, in one step: whoever opens the path finds the old bytes or the
/// new ones, also after a crash at any moment. A new file has mode 0600, a replaced one keeps its mode; of a
/// symbolic link, what it points to is replaced. What is not a regular file (a device, a pipe) cannot be
/// replaced and is written to directly.
///
/// Throws kit::IoError; an old file is untouched then, and no other file is left behind.
void WriteFileAtomically(const std::string& path, Bytes bytes);

}  // namespace zuna_security
