#include "dataflow/conditions.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>

#include "stopwatch.h"
#include "workbench/flow/controllingconditions.h"
#include "workbench/flow/flowlanguage.h"
#include "workbench/flow/rangebodies.h"

namespace qmrules::bench {

namespace {

namespace flow = workbench::flow;

constexpr std::size_t kAsked = 1000;  // statements of a set
constexpr double kMicrosecondsOfRanges = 1;
constexpr double kFirstConditions = 100;  // ms, as for the first question about data
constexpr double kFurtherConditions = 5;

struct Conditions {
  std::size_t statements = 0;
  std::size_t points = 0, inRanges = 0;  // a point counts for each range that it runs in
  double ranges = 0;                     // seconds
  double first = 0;                      // the longest first question of a unit
  std::vector<double> further;
  std::size_t told = 0;
};

void AskUnit(const flow::FlowGraph& graph, std::size_t step, Conditions& sum) {
  const CpuStopwatch ranges;
  const flow::RangeBodies bodies(graph);
  sum.ranges += ranges.Seconds();
  sum.points += graph.Points().size();
  std::vector<flow::NodeId> statements;
  for (flow::PointId point = 0; point < graph.Points().size(); ++point) {
    sum.inRanges += bodies.RangesWith(point).size();
    if (graph.Points()[point].kind == flow::PointKind::Statement) statements.push_back(graph.Points()[point].node);
  }
  sum.statements += statements.size();
  flow::ConditionFinder finder(bodies);
  for (std::size_t at = 0; at < statements.size(); at += step) {
    const CpuStopwatch time;
    // From the middle on, where a first question has most to find out.
    const flow::NodeId asked = statements[(statements.size() / 2 + at) % statements.size()];
    sum.told += finder.ConditionsOf(asked).always.size();
    const double seconds = time.Seconds();
    if (at == 0) {
      sum.first = std::max(sum.first, seconds);
    } else {
      sum.further.push_back(seconds);
    }
  }
}

Conditions Ask(const FlowModels& models) {
  Conditions sum;
  std::vector<flow::FlowGraph> graphs;
  std::size_t points = 0;
  for (const auto& image : models.images) {
    for (std::uint32_t unit = 0; unit < image->Units().size(); ++unit) {
      graphs.push_back(flow::FlowLanguageOf(*image)->BuildFlow(*image, unit));
      points += graphs.back().Points().size();
    }
  }
  for (const flow::FlowGraph& graph : graphs) AskUnit(graph, std::max<std::size_t>(points / kAsked, 1), sum);
  return sum;
}

}  // namespace

void MeasureConditions(const std::vector<FlowModels>& sets, Bars& bars) {
  fmt::print("\n{:<14} {:>8} {:>10} {:>10} {:>10} {:>10} {:>10} {:>10} {:>8}\n", "conditions, ms", "lines", "points",
             "in ranges", "ranges", "first", "further", "worst", "told");
  std::vector<Conditions> all;
  for (const FlowModels& models : sets) {
    const Conditions& set = all.emplace_back(Ask(models));
    const auto questions = static_cast<double>(set.further.size());
    fmt::print("{:<14} {:>8} {:>10} {:>10} {:>10.2f} {:>10.2f} {:>10.3f} {:>10.2f} {:>8.1f}\n", models.name,
               models.lines, set.points, set.inRanges, set.ranges * 1000, set.first * 1000, Median(set.further) * 1000,
               *std::ranges::max_element(set.further) * 1000, static_cast<double>(set.told) / questions);
    std::fflush(stdout);
    bars.Add(fmt::format("ranges_{}_us", models.name), set.ranges * 1e6 / static_cast<double>(set.statements),
             kMicrosecondsOfRanges);
  }
  bars.Add("conditions_first_ms", all[1].first * 1000, kFirstConditions);
  bars.Add("conditions_further_ms", Median(all[1].further) * 1000, kFurtherConditions);
}

}  // namespace qmrules::bench
