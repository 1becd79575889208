// The rows of envelopes.

#pragma once

namespace zuna_bench {

void AddEnvelopeRows();

}  // namespace zuna_bench
