// The rows of single formats.

#pragma once

#include "benchmarks/fixtures.h"

namespace zuna_bench {

void AddShowFormatRows(const Size& size);
void AddLogFormatRows(const Size& size);

}  // namespace zuna_bench
