// The rows of envelopes.

#pragma once

#include "benchmarks/fixtures.h"

namespace zuna_bench {

void AddEnvelopeRows(const Size& size);

}  // namespace zuna_bench
