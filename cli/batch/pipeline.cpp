// Work on many inputs by several workers, whose outcomes are handed on in the order of the inputs.
#include "cli/batch/pipeline.h"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace zuna_cli {

namespace {

void WorkAlone(std::size_t count, const Work& work, const OutcomeSink& sink, const StopRequest& stop) {
  for (std::size_t number = 0; number < count && !stop(); ++number) {
    if (!sink(work(number))) return;
  }
}

/// Workers, each a thread of its own, and the outcomes that wait for their turn. Everything that needs memory
/// is done before the first input is begun.
class Workers {
 public:
  Workers(std::size_t count, std::size_t workers, const Work& work, const StopRequest& stop)
      : count_(count), work_(work), stop_(stop), waiting_(2 * workers) {
    threads_.reserve(workers);
  }
  Workers(const Workers&) = delete;
  Workers& operator=(const Workers&) = delete;
  ~Workers() {
    End();
    for (std::thread& thread : threads_) thread.join();
  }

  /// Starts as many threads as were asked for, or as the system gives. Returns whether there is one.
  bool Start() {
    try {
      while (threads_.size() < threads_.capacity()) threads_.emplace_back([this] { WorkOn(); });
    } catch (const std::exception&) {  // Neither threads nor memory for more: those that are there will do.
    }
    return !threads_.empty();
  }

  /// The next outcome in the order of the inputs; nothing after that of the last input that was begun.
  std::optional<Outcome> Next() {
    std::unique_lock lock(mutex_);
    std::optional<Outcome>& next = waiting_[handed_on_ % waiting_.size()];
    is_ready_.wait(lock, [&] { return next || (handed_on_ == begun_ && IsLastBegun()); });
    if (!next) return std::nullopt;
    ++handed_on_;
    has_room_.notify_one();
    return std::exchange(next, std::nullopt);
  }

  /// Begins no further input.
  void End() {
    const std::lock_guard lock(mutex_);
    is_ended_ = true;
    has_room_.notify_all();
  }

 private:
  void WorkOn() {
    std::unique_lock lock(mutex_);
    while (MayBegin(lock)) {
      const std::size_t number = begun_++;
      lock.unlock();
      Outcome outcome = work_(number);
      lock.lock();
      waiting_[number % waiting_.size()] = std::move(outcome);
      is_ready_.notify_one();
    }
    has_room_.notify_all();  // The others end too.
    is_ready_.notify_one();
  }

  /// Waits until there is room for another outcome. Returns whether there is an input for it.
  bool MayBegin(std::unique_lock<std::mutex>& lock) {
    has_room_.wait(lock, [&] { return IsLastBegun() || begun_ - handed_on_ < waiting_.size(); });
    is_ended_ = is_ended_ || stop_();
    return !IsLastBegun();
  }

  bool IsLastBegun() const { return is_ended_ || begun_ == count_; }

  const std::size_t count_;
  const Work& work_;
  const StopRequest& stop_;
  std::mutex mutex_;  ///< for all that follows, but for the threads
  std::condition_variable is_ready_;
  std::condition_variable has_room_;
  std::vector<std::optional<Outcome>> waiting_;  ///< that of an input is at its number modulo the size
  std::size_t begun_ = 0;
  std::size_t handed_on_ = 0;
  bool is_ended_ = false;
  std::vector<std::thread> threads_;
};

}  // namespace

void WorkInOrder(std::size_t count, unsigned workers, const Work& work, const OutcomeSink& sink,
                 const StopRequest& stop) {
  const std::size_t most = std::min<std::size_t>(count, workers);
  if (most <= 1) return WorkAlone(count, work, sink, stop);
  Workers all(count, most, work, stop);
  if (!all.Start()) return WorkAlone(count, work, sink, stop);
  while (std::optional<Outcome> outcome = all.Next()) {
    if (!sink(std::move(*outcome))) all.End();
  }
}

}  // namespace zuna_cli
