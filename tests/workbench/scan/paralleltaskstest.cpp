#include "workbench/scan/paralleltasks.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

namespace qmrules::workbench {
namespace {

TEST(ParallelTasks, EachIsRunOnceAndToldOnce) {
  for (const unsigned threads : {0U, 1U, 3U, 100U}) {
    std::vector<std::atomic<int>> runs(57);
    std::vector<int> told(57);
    RunInParallel({.count = 57,
                   .threads = threads,
                   .run =
                       [&](std::size_t task, unsigned thread) {
                         EXPECT_LT(thread, std::max(threads, 1U));
                         ++runs[task];
                       },
                   .done = [&](std::size_t task) { ++told[task]; },
                   .cancelled = [] { return false; }});
    for (std::size_t task = 0; task < 57; ++task) {
      EXPECT_EQ(runs[task], 1);
      EXPECT_EQ(told[task], 1);
    }
  }
}

TEST(ParallelTasks, NoneAreNoWork) {
  RunInParallel({.count = 0, .run = [](std::size_t, unsigned) { FAIL(); }, .cancelled = [] { return true; }});
}

TEST(ParallelTasks, NoFurtherOneIsBegunOnceCancelled) {
  std::atomic<int> runs = 0;
  std::atomic<bool> stop = false;
  RunInParallel({.count = 1000,
                 .threads = 2,
                 .run =
                     [&](std::size_t, unsigned) {
                       ++runs;
                       while (!stop) std::this_thread::yield();
                     },
                 .cancelled = [&] { return stop.exchange(true) || true; }});
  EXPECT_LE(runs, 4);
}

TEST(ParallelTasks, WhatIsThrownWhenTellingComesWhenAllHaveEnded) {
  std::atomic<int> running = 0;
  const auto run = [&] {
    RunInParallel({.count = 100,
                   .threads = 3,
                   .run =
                       [&](std::size_t, unsigned) {
                         ++running;
                         --running;
                       },
                   .done = [](std::size_t) { throw std::runtime_error("told"); },
                   .cancelled = [] { return false; }});
  };
  EXPECT_THROW(run(), std::runtime_error);
  EXPECT_EQ(running, 0);
}

TEST(ParallelTasks, AWishForThreadsIsHeeded) {
  EXPECT_EQ(ThreadsFor(3), 3U);
  EXPECT_GE(ThreadsFor(0), 1U);
  EXPECT_LE(ThreadsFor(1'000'000), 256U);
}

}  // namespace
}  // namespace qmrules::workbench
