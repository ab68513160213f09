#pragma once

#include <time.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <vector>

namespace qmrules::bench {

class Stopwatch {
 public:
  Stopwatch() : start_(std::chrono::steady_clock::now()) {}
  double Seconds() const { return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count(); }

 private:
  std::chrono::steady_clock::time_point start_;
};

// The processor time of the calling thread: for work in memory alone, which the rest of the machine's work then does
// not count in.
class CpuStopwatch {
 public:
  CpuStopwatch() : start_(Now()) {}
  double Seconds() const { return Now() - start_; }

 private:
  static double Now() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
  }
  double start_;
};

// Of at least one value; of an even number the upper one of the two in the middle.
inline double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

}  // namespace qmrules::bench
