#include "browser/timetable.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <ctime>

#include "stopwatch.h"

namespace qmrules::bench {

namespace {

double CpuSeconds() {
  timespec spent{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &spent);
  return static_cast<double>(spent.tv_sec) + static_cast<double>(spent.tv_nsec) * 1e-9;
}

}  // namespace

Spent TimeOf(const std::function<void()>& work) {
  const Stopwatch stopwatch;
  const double cpuBefore = CpuSeconds();
  work();
  return {.seconds = stopwatch.Seconds(), .cpuSeconds = CpuSeconds() - cpuBefore};
}

void TimeTable::PrintHeading() const {
  fmt::print("{:<20} {:>8} {:>7} {:>11} {:>11} {:>9} {:>9} {:>11} {:>8}\n", "act", "rows", "rounds", "median ms",
             "longest ms", "cpu ms", "aim ms", "fetch ms", "ratio");
}

void TimeTable::Measure(const Act& act, const TimedRound& round, const BareFetch& fetch) {
  std::vector<double> acts;
  std::vector<double> cpu;
  std::vector<double> fetches;
  std::uint64_t rows = 0;
  for (int number = 0; number < act.rounds; ++number) {
    const Spent spent = round(number);
    acts.push_back(spent.seconds);
    cpu.push_back(spent.cpuSeconds);
    fetches.push_back(TimeOf([&] { rows = fetch(number); }).seconds);
  }
  const double longest = *std::max_element(acts.begin(), acts.end());
  const double median = Median(std::move(acts));
  const double bare = Median(std::move(fetches));
  fmt::print("{:<20} {:>8} {:>7} {:>11.3f} {:>11.3f} {:>9.3f} {:>9.0f} {:>11.3f} {:>8.2f}\n", act.name, rows,
             act.rounds, median * 1000, longest * 1000, Median(std::move(cpu)) * 1000, act.aimSeconds * 1000,
             bare * 1000, median / bare);
  std::fflush(stdout);
  bars_.Add(act.name, median / bare, act.ratioLimit);
}

}  // namespace qmrules::bench
