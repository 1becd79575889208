// The rows of whole conversions.

#pragma once

namespace zuna_bench {

void AddConversionRows();

}  // namespace zuna_bench
