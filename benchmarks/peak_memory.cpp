// The peak memory of a conversion, in a process of its own.

#include "benchmarks/peak_memory.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "benchmarks/fixtures.h"
#include "format_converter/showdata.h"

namespace zuna_bench {

double PeakMemory() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
#ifdef __APPLE__
  return static_cast<double>(usage.ru_maxrss);
#else
  return static_cast<double>(usage.ru_maxrss) * 1024;
#endif
}

void InAnotherProcess(const std::function<void()>& work) {
  std::fflush(stdout);
  const pid_t child = fork();
  if (child == 0) {
    work();
    std::fflush(stdout);
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  if (status != 0) std::printf("a measurement failed\n");
}

namespace {

void PrintPeak(const char* work, double plaintexts, const std::function<void()>& convert) {
  InAnotherProcess([&] {
    const double before = PeakMemory();
    convert();
    const double peak = PeakMemory() - before;
    std::printf(
        "%-46s %9.1f MB  limit %6.1f MB  ratio %5.2f  [limit: plaintext of input and output; aim 2]\n", work,
        peak / 1e6, plaintexts / 1e6, peak / plaintexts);
  });
}

void WriteInputs(const std::string& legacy, const std::string& log) {
  const auto bytes = Encrypted(PlaintextOf(LegacyShow(kLargeShow.count)));
  std::ofstream(legacy, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  std::ofstream(log, std::ios::binary) << "ZUNA" << std::string(4 + 16 + 1 + 1 + 4, '\0');
}

}  // namespace

void PrintPeakMemory() {
  std::string folder = (std::filesystem::temp_directory_path() / "zuna_peakXXXXXX").string();
  if (mkdtemp(folder.data()) == nullptr) return;
  const std::string legacy = folder + "/legacy";
  const std::string log = folder + "/log";
  const std::string current = folder + "/current";
  const std::string out = folder + "/out";
  InAnotherProcess([&] { WriteInputs(legacy, log); });
  InAnotherProcess([&] { showdata_up(legacy, current, log, {1, 2}, kKey); });
  const auto plaintexts =
      static_cast<double>(std::filesystem::file_size(legacy) + std::filesystem::file_size(current));
  std::printf("Peak memory, 5 million events\n");
  PrintPeak("up to 1.2", plaintexts, [&] { showdata_up(legacy, out, log, {1, 2}, kKey); });
  PrintPeak("down from 1.2", plaintexts, [&] { showdata_down(current, out, kKey); });
  std::filesystem::remove_all(folder);
}

}  // namespace zuna_bench
