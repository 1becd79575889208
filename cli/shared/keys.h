// The keys of one run of the tool.
#pragma once

#include <string>
#include <vector>

#include "toolkit/key_file.h"

namespace zuna_cli {

/// The keys that files are opened with, in the order in which they are tried; never none. The first one seals
/// an output that has no input.
using Keys = std::vector<zuna_toolkit::SecretKey>;

/// What the user says about keys.
struct KeyOptions {
  std::vector<std::string> files;  ///< as the command line gives them
  bool empty_key = false;          ///< a key may be empty
};

/// The key files to read: those of `options`, else the one that ZUNA_KEY_FILE names, else none. An empty name
/// stands for the empty key. Throws Failure (kRefused) for one that was not allowed.
std::vector<std::string> KeyFilePaths(const KeyOptions& options);

/// Reads all key files; without one, the empty key is the only one. `quiet` leaves the warning out that a key
/// file is open to other users. Throws Failure, zuna_toolkit::Error or kit::IoError.
Keys LoadKeys(const KeyOptions& options, bool quiet);

}  // namespace zuna_cli
