#pragma once

#include <cstddef>
#include <functional>

namespace qmrules::workbench {

// Tasks with the numbers 0 … count - 1, taken in this order by several threads.
struct ParallelTasks {
  std::size_t count = 0;
  unsigned threads = 1;
  // Runs one task on the thread of this number (from 0). Throws nothing.
  std::function<void(std::size_t task, unsigned thread)> run;
  // Told on the calling thread of each task that has been run. May be empty.
  std::function<void(std::size_t task)> done = {};
  // Asked on the calling thread every now and then, and behind each `done`; after true no further task is begun.
  std::function<bool()> cancelled;
};

// Returns when no task is under way any more. What `done` and `cancelled` throw goes on to the caller, after that.
void RunInParallel(const ParallelTasks& tasks);

// The number of threads that a wish for so many means; 0 asks for one for each core of the machine.
unsigned ThreadsFor(int wish);

}  // namespace qmrules::workbench
