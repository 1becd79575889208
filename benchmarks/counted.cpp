// Runs each row of a small show and of a small log once, for callgrind to count (scripts/instructions).

#include <valgrind/callgrind.h>

#include "benchmarks/conversion_rows.h"
#include "benchmarks/envelope_rows.h"
#include "benchmarks/fixtures.h"
#include "benchmarks/format_rows.h"
#include "benchmarks/rows.h"

int main() {
  zuna_bench::AddEnvelopeRows(zuna_bench::kSmallShow);
  zuna_bench::AddShowFormatRows(zuna_bench::kSmallShow);
  zuna_bench::AddShowConversionRows(zuna_bench::kSmallShow);
  zuna_bench::AddLogFormatRows(zuna_bench::kSmallLog);
  zuna_bench::AddLogConversionRows(zuna_bench::kSmallLog);
  CALLGRIND_START_INSTRUMENTATION;
  for (const zuna_bench::Row& row : zuna_bench::Rows()) {
    row.run();  // What only the first run costs is not counted.
    CALLGRIND_ZERO_STATS;
    row.run();
    CALLGRIND_DUMP_STATS_AT(row.work.c_str());
  }
  return 0;
}
