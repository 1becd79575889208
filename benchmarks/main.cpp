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
  for (const zuna_bench::Size& size : {zuna_bench::kSmallShow, zuna_bench::kLargeShow}) {
    zuna_bench::AddEnvelopeRows(size);
    zuna_bench::AddShowFormatRows(size);
  }
  for (const zuna_bench::Size& size :
       {zuna_bench::kSmallShow, zuna_bench::kMiddleShow, zuna_bench::kLargeShow}) {
    zuna_bench::AddShowConversionRows(size);
    zuna_bench::AddSuiteRows(size);
  }
  for (const zuna_bench::Size& size : {zuna_bench::kSmallLog, zuna_bench::kLargeLog}) {
    zuna_bench::AddLogConversionRows(size);
    zuna_bench::AddLogFormatRows(size);
  }
  const zuna_bench::Folders folders;
  zuna_bench::AddFolderRows(folders);
  zuna_bench::RunRows(argc, argv);
  return 0;
}
