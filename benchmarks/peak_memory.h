// The peak memory of a conversion.

#pragma once

#include <functional>

namespace zuna_bench {

/// The largest memory that this process has had so far, in bytes.
double PeakMemory();

/// Does `work` in a process of its own, and says so where that fails.
void InAnotherProcess(const std::function<void()>& work);

/// Measures the peak memory of whole conversions, each in a process of its own, and prints it beside the
/// plaintext of input and output. Has to be called before anything big is allocated.
void PrintPeakMemory();

}  // namespace zuna_bench
