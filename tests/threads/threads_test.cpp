// Every entry point of the shared library, called by eight threads at once. Their results show that they do
// not disturb each other, and ThreadSanitizer watches what they touch.

#include <gtest/gtest.h>

#include <barrier>
#include <filesystem>
#include <thread>

#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/legacy_samples.h"
#include "tests/support/temporary_folder.h"
#include "tests/threads/calls.h"
#include "tests/threads/printed_by_thread.h"
#include "zuna_midi/show_data.h"

namespace {

using zuna_test::Call;
using zuna_test::Desk;
using zuna_test::Inputs;
using zuna_test::kKey;
using zuna_test::Written;
using zuna_test::WrittenAt;

constexpr std::size_t kThreads = 8;

std::string PutEncrypted(const zuna_test::TemporaryFolder& folder, const std::string& name,
                         const std::string& plaintext, const CipherKey& key = kKey) {
  const auto bytes = zuna_test::Encrypted(plaintext, key);
  return folder.Put(name, std::string(bytes.begin(), bytes.end()));
}

Inputs MakeInputs(const zuna_test::TemporaryFolder& folder) {
  const std::string legacy_show = Written(zuna_test::SampleLegacyShow());
  const std::string legacy_log = Written(zuna_test::SampleLegacyLog());
  const std::string show = WrittenAt(zuna_test::SampleLegacyShow().get_version_1_0(), {1, 2});
  std::filesystem::create_directory(folder / "listed");
  Inputs inputs;
  inputs.folder = folder / "listed";
  inputs.legacy_show = PutEncrypted(folder, "legacy.showdata", legacy_show);
  inputs.current_show = PutEncrypted(folder, "current.showdata", show);
  inputs.legacy_log = PutEncrypted(folder, "legacy.logdata", legacy_log);
  inputs.current_log =
      PutEncrypted(folder, "current.logdata", WrittenAt(zuna_test::SampleCurrentLog(), {1, 2}));
  inputs.listed_show = PutEncrypted(folder, "listed/a.showdata", show, {});
  inputs.plain_legacy_show = folder.Put("plain-legacy.showdata", legacy_show);
  inputs.plain_current_show = folder.Put("plain-current.showdata", show);
  inputs.plain_legacy_log = folder.Put("plain-legacy.logdata", legacy_log);
  inputs.legacy_log_object = zuna_test::SampleLegacyLog();
  inputs.current_log_object = zuna_test::SampleCurrentLog();
  return inputs;
}

std::vector<Call> AllCalls() {
  std::vector<Call> all;
  for (const auto& some : {zuna_test::VersionCalls(), zuna_test::ShowCalls(), zuna_test::LogCalls(),
                           zuna_test::InspectionCalls()})
    all.insert(all.end(), some.begin(), some.end());
  return all;
}

/// What comes out of a call, or what it throws.
std::string Outcome(const Call& call, const Desk& desk) {
  try {
    return call.run(desk);
  } catch (const std::exception& error) {
    return std::string("threw: ") + error.what();
  }
}

/// Each thread's outcomes of all calls, beginning `stride` calls after the thread before it.
std::vector<std::vector<std::string>> OutcomesAtOnce(const std::vector<Call>& calls, std::size_t stride,
                                                     const std::vector<Desk>& desks) {
  std::vector<std::vector<std::string>> outcomes(desks.size(), std::vector<std::string>(calls.size()));
  std::barrier together(static_cast<std::ptrdiff_t>(desks.size()));
  std::vector<std::thread> threads;
  for (std::size_t number = 0; number < desks.size(); ++number) {
    threads.emplace_back([&, number] {
      for (std::size_t step = 0; step < calls.size(); ++step) {
        const std::size_t chosen = (step + number * stride) % calls.size();
        together.arrive_and_wait();
        outcomes[number][chosen] = Outcome(calls[chosen], desks[number]);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  return outcomes;
}

TEST(Threads, AnyTwoEntryPointsMayRunAtOnce) {
  const zuna_test::TemporaryFolder folder;
  const zuna_test::PrintedByThread printed;
  const Inputs inputs = MakeInputs(folder);
  const std::vector<Call> calls = AllCalls();

  std::vector<Desk> desks;
  for (std::size_t number = 0; number < kThreads; ++number)
    desks.push_back({inputs, folder / ("output-" + std::to_string(number))});
  // The threads come before the calls alone, so that they also meet in what happens only once in a process.
  std::vector<std::vector<std::vector<std::string>>> rounds;
  for (std::size_t stride = 0; stride < calls.size(); ++stride)
    rounds.push_back(OutcomesAtOnce(calls, stride, desks));

  for (std::size_t i = 0; i < calls.size(); ++i) {
    const std::string alone = calls[i].run(desks[0]);
    EXPECT_FALSE(alone.empty()) << calls[i].name;
    for (const auto& round : rounds)
      for (const auto& outcomes : round) EXPECT_EQ(outcomes[i], alone) << calls[i].name;
  }
}

}  // namespace
