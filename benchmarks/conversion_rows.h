// The rows of legacy files and of whole conversions.

#pragma once

#include "benchmarks/fixtures.h"

namespace zuna_bench {

void AddShowConversionRows(const Size& size);
/// The conversion of a show beside the one of earlier builds, with their ciphers.
void AddSuiteRows(const Size& size);
void AddLogConversionRows(const Size& size);

}  // namespace zuna_bench
