#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "bars.h"

namespace qmrules::bench {

// One act of the user: how long it takes beside the bare fetch of the rows that it shows.
struct Act {
  std::string name;
  double aimSeconds = 0;  // the most that the act may take
  double ratioLimit = 0;  // the most that it may take as a multiple of the fetch
  int rounds = 0;
};

// What a piece of work took: by the clock, and of a processor, which other programs beside it do not lengthen.
struct Spent {
  double seconds = 0;
  double cpuSeconds = 0;
};
Spent TimeOf(const std::function<void()>& work);

// Runs one round, counted from 0, and gives what it took, without what only prepares it.
using TimedRound = std::function<Spent(int round)>;
// Fetches the rows of one round and copies each field into a text of its own; gives the number of rows.
using BareFetch = std::function<std::uint64_t(int round)>;

// What the program prints: a line of the table for each act as it comes, and the bars at the end.
class TimeTable {
 public:
  void PrintHeading() const;
  // Runs act and fetch in turn and prints their medians. The ratio of the two, by the clock, becomes a bar.
  void Measure(const Act& act, const TimedRound& round, const BareFetch& fetch);
  void PrintBars() const { bars_.Print(); }

 private:
  Bars bars_;
};

}  // namespace qmrules::bench
