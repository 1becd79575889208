// Work on many inputs by several workers: a pipeline of oneTBB, which keeps the order.
#include "cli/batch/pipeline.h"

#include <oneapi/tbb/global_control.h>
#include <oneapi/tbb/parallel_pipeline.h>
#include <oneapi/tbb/task_arena.h>

#include <atomic>
#include <memory>
#include <utility>

namespace zuna_cli {

namespace {

namespace tbb = oneapi::tbb;

void WorkAlone(std::size_t count, const Work& work, const OutcomeSink& sink, const StopRequest& stop) {
  for (std::size_t number = 0; number < count && !stop(); ++number) {
    if (!sink(work(number))) return;
  }
}

}  // namespace

void WorkInOrder(std::size_t count, unsigned workers, const Work& work, const OutcomeSink& sink,
                 const StopRequest& stop) {
  if (workers <= 1 || count <= 1) return WorkAlone(count, work, sink, stop);
  const tbb::global_control threads(tbb::global_control::max_allowed_parallelism, workers);
  std::size_t next = 0;
  std::atomic<bool> ended = false;
  const auto take = [&](tbb::flow_control& control) -> std::size_t {
    if (next < count && !ended && !stop()) return next++;
    control.stop();
    return 0;
  };
  const auto do_work = [&](std::size_t number) { return std::make_shared<Outcome>(work(number)); };
  const auto hand_on = [&](const std::shared_ptr<Outcome>& outcome) {
    if (!sink(std::move(*outcome))) ended = true;
  };
  using tbb::filter_mode;
  const auto all = tbb::make_filter<void, std::size_t>(filter_mode::serial_in_order, take) &
                   tbb::make_filter<std::size_t, std::shared_ptr<Outcome>>(filter_mode::parallel, do_work) &
                   tbb::make_filter<std::shared_ptr<Outcome>, void>(filter_mode::serial_in_order, hand_on);
  tbb::task_arena arena(static_cast<int>(workers));  // as many as were asked for, also beyond the processors
  arena.execute([&] { tbb::parallel_pipeline(std::size_t{2} * workers, all); });
}

}  // namespace zuna_cli
