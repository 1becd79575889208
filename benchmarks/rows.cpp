// How a row is measured and printed.

#include "benchmarks/rows.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <utility>

namespace zuna_bench {

namespace {

constexpr int kRepetitions = 7;
constexpr const char* kLimit = " (limit)";

std::vector<Row>& KnownRows() {
  static std::vector<Row> rows;
  return rows;
}

void Measure(benchmark::State& state, const std::function<void()>& work,
             const std::function<void()>& prepare) {
  for ([[maybe_unused]] auto iteration : state) {
    if (prepare) {
      state.PauseTiming();
      prepare();
      state.ResumeTiming();
    }
    work();
  }
}

void Register(const std::string& name, const std::function<void()>& work,
              const std::function<void()>& prepare) {
  benchmark::RegisterBenchmark(name.c_str(), [&](benchmark::State& state) { Measure(state, work, prepare); })
      ->Repetitions(kRepetitions)
      ->ReportAggregatesOnly()
      ->Unit(benchmark::kMillisecond)
      ->UseRealTime();
}

/// Prints as usual and keeps the medians, in seconds.
class MedianReporter : public benchmark::ConsoleReporter {
 public:
  std::map<std::string, double> medians;

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.aggregate_name == "median")
        medians[run.run_name.function_name] = run.GetAdjustedRealTime() / 1e3;
    }
  }
};

void PrintRate(const Row& row, double seconds) {
  if (row.files > 0) {
    std::printf("  %6.0f files/s", static_cast<double>(row.files) / seconds);
  } else if (row.events > 0) {
    std::printf("  %6.1f M events/s", static_cast<double>(row.events) / seconds / 1e6);
  }
  if (row.bytes > 0) std::printf("  %5.2f GB/s", static_cast<double>(row.bytes) / seconds / 1e9);
}

void PrintRow(const Row& row, const std::map<std::string, double>& medians) {
  const auto own = medians.find(row.work);
  if (own == medians.end()) return;  // filtered out
  const double seconds = own->second;
  std::printf("%-46s %9.2f ms", row.work.c_str(), seconds * 1e3);
  if (row.limit) {
    const double limit = medians.at(row.work + kLimit);
    std::printf("  limit %9.2f ms  ratio %5.2f", limit * 1e3, seconds / limit);
    if (row.events > 0) {
      std::printf("  above it %6.1f ns/event", (seconds - limit) * 1e9 / static_cast<double>(row.events));
    }
  }
  PrintRate(row, seconds);
  std::printf("  [%s]\n", row.goals.c_str());
}

}  // namespace

void AddRow(Row row) { KnownRows().push_back(std::move(row)); }

const std::vector<Row>& Rows() { return KnownRows(); }

std::map<std::string, double> TimeRows(int argc, char** argv) {
  for (const Row& row : Rows()) {
    Register(row.work, row.run, row.prepare);
    if (row.limit) Register(row.work + kLimit, row.limit, row.prepare);
  }
  // In turn, so that a change of the machine's speed meets the work and its limit alike.
  std::string interleave = "--benchmark_enable_random_interleaving=true";
  std::vector<char*> arguments(argv, argv + argc);
  arguments.insert(arguments.begin() + 1, interleave.data());
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  MedianReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  return reporter.medians;
}

void RunRows(int argc, char** argv) {
  const std::map<std::string, double> medians = TimeRows(argc, argv);
  std::printf("\nMedians of %d runs, work and limit in turn\n", kRepetitions);
  for (const Row& row : Rows()) PrintRow(row, medians);
}

}  // namespace zuna_bench
