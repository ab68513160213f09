#include "validation/indexing.h"

#include <fmt/format.h>

#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

#include "stopwatch.h"
#include "validation/filelines.h"
#include "validation/generatedlines.h"
#include "validation/segmentrelocation.h"
#include "validation/suffixtree.h"

namespace qmrules::bench {

namespace {

constexpr double kGrowthLimit = 1.5;
constexpr double kBytesLimit = 200;
constexpr double kRepeatLimit = 2;
constexpr double kSearchLimit = 3;
constexpr double kNanoseconds = 1e9;

// Seconds of the processor that an index took, a value for each round.
struct Rounds {
  std::vector<double> numbering = {};
  std::vector<double> building = {};
  std::vector<double> both = {};
};

// A file and what its index costs.
struct Measured {
  std::string name;
  std::string text;
  std::size_t lines = 0;
  Rounds fresh = {};  // in memory that the system has yet to hand out
  Rounds kept = {};   // in that of the index before, as a run over many files makes them
  double bytes = 0;   // of each line, the texts of the distinct lines left out
  std::int32_t distinct = 0;
  std::int32_t nodes = 0;

  double PerLine(const std::vector<double>& seconds) const {
    return Median(seconds) * kNanoseconds / static_cast<double>(lines);
  }
};

void Index(const Measured& file, validation::FileLines& lines, validation::SuffixTree& tree, Rounds& rounds) {
  const CpuStopwatch numbering;
  if (!lines.LoadLineIds(file.text, false, static_cast<std::int32_t>(file.lines))) {
    throw std::runtime_error(file.name + " has more lines than were asked for.");
  }
  rounds.numbering.push_back(numbering.Seconds());
  const CpuStopwatch building;
  tree.BuildSuffixTree(lines.LineIds(), {});
  rounds.building.push_back(building.Seconds());
  rounds.both.push_back(rounds.numbering.back() + rounds.building.back());
}

void MeasureOnce(Measured& file) {
  validation::FileLines lines;
  validation::SuffixTree tree;
  Index(file, lines, tree, file.fresh);
  Index(file, lines, tree, file.kept);
  file.bytes = static_cast<double>(lines.Bytes() + tree.Bytes()) / static_cast<double>(file.lines);
  file.distinct = lines.DistinctLines();
  file.nodes = tree.NodeCount();
}

// The files take turns.
void Measure(std::vector<Measured>& files, int rounds) {
  for (int round = 0; round < rounds; ++round) {
    for (auto& file : files) MeasureOnce(file);
  }
  fmt::print("{:<14} {:>9} {:>9} {:>9} {:>11}   {:>23}   {:>23}\n", "file", "lines", "distinct", "nodes", "bytes/line",
             "fresh: number tree both", "kept: number tree both");
  for (const auto& file : files) {
    fmt::print("{:<14} {:>9} {:>9} {:>9} {:>11.1f}", file.name, file.lines, file.distinct, file.nodes, file.bytes);
    for (const Rounds* rounds : {&file.fresh, &file.kept}) {
      fmt::print("   {:>7.1f} {:>7.1f} {:>7.1f}", file.PerLine(rounds->numbering), file.PerLine(rounds->building),
                 file.PerLine(rounds->both));
    }
    fmt::print(" ns/line\n");
  }
  std::fflush(stdout);
}

Measured File(std::string name, std::string (*text)(std::size_t), std::size_t lines) {
  return {.name = std::move(name), .text = text(lines), .lines = lines};
}

// The median time of looking a segment up and collecting its matches.
double SearchSeconds(const validation::FileIndex& index, const std::vector<std::int32_t>& segment,
                     std::size_t matches) {
  std::vector<double> seconds;
  std::vector<std::int32_t> starts;
  for (int round = 0; round < 101; ++round) {
    starts.clear();
    const CpuStopwatch stopwatch;
    const std::int32_t node = index.Tree().FindSegment(segment);
    if (node != 0) index.Tree().CollectLeaves(node, starts);
    seconds.push_back(stopwatch.Seconds());
    if (starts.size() != matches) {
      throw std::runtime_error(fmt::format("{} matches in place of {}.", starts.size(), matches));
    }
  }
  return Median(seconds);
}

}  // namespace

void MeasureGrowth(Bars& bars) {
  std::vector<Measured> files{
      File("one_million", HalfDistinctLines, 1'000'000), File("four_million", HalfDistinctLines, 4'000'000),
      File("stock_one", StockAndUniqueLines, 1'000'000), File("stock_four", StockAndUniqueLines, 4'000'000)};
  Measure(files, 7);
  const auto growth = [](const Measured& few, const Measured& many, std::vector<double> Rounds::*seconds) {
    return many.PerLine(many.kept.*seconds) / few.PerLine(few.kept.*seconds);
  };
  bars.Add("index_growth", growth(files[0], files[1], &Rounds::both), kGrowthLimit);
  bars.Add("tree_growth", growth(files[0], files[1], &Rounds::building), kGrowthLimit);
  bars.Add("index_growth_stock", growth(files[2], files[3], &Rounds::both), kGrowthLimit);
  bars.Add("index_bytes_per_line", files[1].bytes, kBytesLimit);
}

void MeasureRepeats(Bars& bars) {
  constexpr std::size_t lines = 200'000;
  std::vector<Measured> files{File("distinct", DistinctLines, lines), File("half_distinct", HalfDistinctLines, lines),
                              File("one_line", RepeatedLine, lines), File("alternating", AlternatingLines, lines)};
  Measure(files, 15);
  const double distinct = files[0].PerLine(files[0].kept.both);
  bars.Add("index_one_line", files[2].PerLine(files[2].kept.both) / distinct, kRepeatLimit);
  bars.Add("index_alternating", files[3].PerLine(files[3].kept.both) / distinct, kRepeatLimit);
}

void MeasureSearches(Bars& bars) {
  validation::FileIndex index({});
  const auto perMatch = [&index](std::size_t lines) {
    index.Load(RepeatedLine(lines));
    return SearchSeconds(index, {1, 1}, lines - 1) / static_cast<double>(lines - 1);
  };
  const double few = perMatch(20'000);
  const double many = perMatch(200'000);

  index.Load(DistinctLines(200'000));
  const auto perLine = [&index](std::size_t count) {
    const auto ids = index.Lines().LineIds().subspan(1, count);
    return SearchSeconds(index, {ids.begin(), ids.end()}, 1) / static_cast<double>(count);
  };
  const double shortOne = perLine(1'000);
  const double longOne = perLine(100'000);
  fmt::print(
      "a search: {:.2f} ns a match of 19,999 and {:.2f} of 199,999; {:.2f} ns a line of 1,000 and {:.2f} of "
      "100,000\n",
      few * kNanoseconds, many * kNanoseconds, shortOne * kNanoseconds, longOne * kNanoseconds);
  bars.Add("search_matches", many / few, kSearchLimit);
  bars.Add("search_length", longOne / shortOne, kSearchLimit);
}

}  // namespace qmrules::bench
