// The peak memory of a conversion.

#pragma once

namespace zuna_bench {

/// Measures the peak memory of whole conversions, each in a process of its own, and prints it beside the
/// plaintext of input and output. Has to be called before anything big is allocated.
void PrintPeakMemory();

}  // namespace zuna_bench
