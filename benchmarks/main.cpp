// Prints what the converter costs, as ratios to limits that are measured in the same run. Options are those
// of Google Benchmark; --benchmark_filter=REGEX chooses rows.

#include "benchmarks/conversion_rows.h"
#include "benchmarks/envelope_rows.h"
#include "benchmarks/folder_rows.h"
#include "benchmarks/format_rows.h"
#include "benchmarks/peak_memory.h"
#include "benchmarks/rows.h"

int main(int argc, char** argv) {
  zuna_bench::PrintPeakMemory();
  zuna_bench::AddEnvelopeRows();
  zuna_bench::AddConversionRows();
  zuna_bench::AddFormatRows();
  const zuna_bench::Folders folders;
  zuna_bench::AddFolderRows(folders);
  zuna_bench::RunRows(argc, argv);
  return 0;
}
