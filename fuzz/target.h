// What every fuzz target defines and uses (fuzz/README.md).

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// Runs one input. Whatever the bytes are, it returns 0; a property that does not hold ends the process.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

/// Ends the process with a message unless `holds`.
inline void Require(bool holds, const char* property) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", property);
  std::abort();
}

}  // namespace fuzz
