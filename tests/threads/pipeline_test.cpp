// The workers of the command-line tool: order, ends, and how much waits. ThreadSanitizer watches them, too.
#include "cli/batch/pipeline.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <numeric>
#include <string>
#include <thread>
#include <vector>

namespace zuna_cli {
namespace {

using Numbers = std::vector<std::size_t>;

Numbers UpTo(std::size_t count) {
  Numbers numbers(count);
  std::iota(numbers.begin(), numbers.end(), std::size_t{0});
  return numbers;
}

/// An outcome that tells its number. Later ones are often ready before earlier ones.
Outcome WorkOn(std::size_t number) {
  std::this_thread::sleep_for(std::chrono::microseconds(number % 3 * 200));
  Outcome outcome;
  outcome.text = std::to_string(number);
  return outcome;
}

bool NeverStop() { return false; }

TEST(Pipeline, HandsOnEveryOutcomeInOrder) {
  for (const unsigned workers : {1U, 2U, 3U, 16U}) {
    for (const std::size_t count : {0U, 1U, 2U, 5U, 100U}) {
      Numbers handed_on;
      WorkInOrder(
          count, workers, WorkOn,
          [&](Outcome&& outcome) {
            handed_on.push_back(std::stoul(outcome.text));
            return true;
          },
          NeverStop);
      EXPECT_EQ(handed_on, UpTo(count)) << workers << " workers";
    }
  }
}

TEST(Pipeline, WorksOnAsManyInputsAtATimeAsThereAreWorkers) {
  constexpr unsigned kWorkers = 4;
  std::mutex mutex;
  std::condition_variable all_are_here;
  std::size_t here = 0;
  std::size_t waited_in_vain = 0;
  WorkInOrder(
      kWorkers, kWorkers,
      [&](std::size_t number) {
        std::unique_lock lock(mutex);
        ++here;
        all_are_here.notify_all();
        const bool met =
            all_are_here.wait_for(lock, std::chrono::seconds(10), [&] { return here == kWorkers; });
        waited_in_vain += met ? 0 : 1;
        return WorkOn(number);
      },
      [](Outcome&&) { return true; }, NeverStop);
  EXPECT_EQ(waited_in_vain, 0U);
}

TEST(Pipeline, HandsOnWhatWasBegunBeforeItsEnd) {
  for (const unsigned workers : {1U, 2U, 8U}) {
    std::atomic<std::size_t> begun = 0;
    Numbers handed_on;
    WorkInOrder(
        1000, workers,
        [&](std::size_t number) {
          ++begun;
          return WorkOn(number);
        },
        [&](Outcome&& outcome) {
          handed_on.push_back(std::stoul(outcome.text));
          return handed_on.size() < 5;
        },
        NeverStop);
    EXPECT_EQ(handed_on, UpTo(begun)) << workers << " workers";
    EXPECT_LE(begun, 5 + 2 * workers);
  }
}

TEST(Pipeline, BeginsNothingMoreOnceItIsToStop) {
  for (const unsigned workers : {1U, 2U, 8U}) {
    std::atomic<bool> stop = false;
    Numbers handed_on;
    WorkInOrder(
        1000, workers,
        [&](std::size_t number) {
          if (number == 10) stop = true;
          return WorkOn(number);
        },
        [&](Outcome&& outcome) {
          handed_on.push_back(std::stoul(outcome.text));
          return true;
        },
        [&] { return stop.load(); });
    EXPECT_EQ(handed_on, UpTo(handed_on.size())) << workers << " workers";
    EXPECT_GE(handed_on.size(), 11U);
    EXPECT_LE(handed_on.size(), 11U + 2 * workers);
  }
}

TEST(Pipeline, LetsTwiceAsManyOutcomesWaitAsThereAreWorkers) {
  constexpr unsigned kWorkers = 4;
  std::atomic<std::size_t> begun = 0;
  std::size_t handed_on = 0;
  WorkInOrder(
      100, kWorkers,
      [&](std::size_t number) {
        ++begun;
        return number == 0 ? (std::this_thread::sleep_for(std::chrono::milliseconds(50)), WorkOn(number))
                           : WorkOn(number);
      },
      [&](Outcome&&) {
        EXPECT_LE(begun, ++handed_on + 2 * kWorkers);
        return true;
      },
      NeverStop);
  EXPECT_EQ(handed_on, 100U);
}

TEST(Pipeline, StartsNoThreadForOneWorkerOrOneInput) {
  const std::thread::id here = std::this_thread::get_id();
  const auto work = [&](std::size_t number) {
    EXPECT_EQ(std::this_thread::get_id(), here);
    return WorkOn(number);
  };
  const auto sink = [](Outcome&&) { return true; };
  WorkInOrder(10, 1, work, sink, NeverStop);
  WorkInOrder(1, 8, work, sink, NeverStop);
}

}  // namespace
}  // namespace zuna_cli
