#include "workbench/scan/paralleltasks.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace qmrules::workbench {

namespace {

constexpr std::chrono::milliseconds kBetweenQuestions{50};
constexpr unsigned kMostThreads = 256;

class Run {
 public:
  explicit Run(const ParallelTasks& tasks) : tasks_(tasks) {}

  void Work(unsigned thread) {
    while (!stop_) {
      const std::size_t task = next_++;
      if (task >= tasks_.count) break;
      tasks_.run(task, thread);
      if (!tasks_.done) continue;
      const std::lock_guard lock(mutex_);
      finished_.push_back(task);
      changed_.notify_one();
    }
    const std::lock_guard lock(mutex_);
    ++ended_;
    changed_.notify_one();
  }

  // Until all of so many threads have ended.
  void Attend(unsigned threads) {
    std::vector<std::size_t> finished;
    for (bool ended = false; !ended;) {
      {
        std::unique_lock lock(mutex_);
        changed_.wait_for(lock, kBetweenQuestions, [&] { return !finished_.empty() || ended_ == threads; });
        finished = std::exchange(finished_, {});
        ended = ended_ == threads;
      }
      for (const std::size_t task : finished) {
        if (tasks_.done) tasks_.done(task);
      }
      if (!stop_ && tasks_.cancelled()) stop_ = true;
    }
  }

  void Stop() { stop_ = true; }

 private:
  const ParallelTasks& tasks_;
  std::atomic<std::size_t> next_ = 0;
  std::atomic<bool> stop_ = false;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<std::size_t> finished_;  // not yet told
  unsigned ended_ = 0;
};

}  // namespace

void RunInParallel(const ParallelTasks& tasks) {
  if (tasks.count == 0) return;
  Run run(tasks);
  const unsigned threads = static_cast<unsigned>(std::min<std::size_t>(std::max(tasks.threads, 1U), tasks.count));
  std::vector<std::jthread> workers;
  // Ends the threads before they are joined, whatever is thrown.
  struct StopAtEnd {
    Run& run;
    std::vector<std::jthread>& workers;
    ~StopAtEnd() {
      run.Stop();
      workers.clear();
    }
  } const stop{run, workers};
  workers.reserve(threads);
  for (unsigned thread = 0; thread < threads; ++thread) workers.emplace_back([&run, thread] { run.Work(thread); });
  run.Attend(threads);
}

unsigned ThreadsFor(int wish) {
  const unsigned threads = wish > 0 ? static_cast<unsigned>(wish) : std::max(1U, std::thread::hardware_concurrency());
  return std::min(threads, kMostThreads);
}

}  // namespace qmrules::workbench
