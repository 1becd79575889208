#pragma once

namespace zuna_bench {

void AddConversionRows();

}  // namespace zuna_bench
