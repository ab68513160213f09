#include "dataflow/graphs.h"

#include <fmt/format.h>

#include <cstdio>

#include "stopwatch.h"
#include "workbench/flow/flowlanguage.h"

namespace qmrules::bench {

namespace {

namespace flow = workbench::flow;
namespace codemodel = workbench::codemodel;

constexpr double kMicrosecondsPerStatement = 1;
constexpr double kMemoryGrowth = 1.1;
constexpr int kRounds = 11;

struct Graphs {
  std::size_t statements = 0;
  std::size_t points = 0;
  std::size_t bytes = 0;
};

Graphs BuildAll(const FlowModels& models) {
  Graphs graphs;
  for (const auto& image : models.images) {
    const flow::FlowLanguage& language = *flow::FlowLanguageOf(*image);
    for (std::uint32_t unit = 0; unit < image->Units().size(); ++unit) {
      const flow::FlowGraph graph = language.BuildFlow(*image, unit);
      graphs.points += graph.Points().size();
      graphs.bytes += graph.Bytes();
      for (const flow::Point& point : graph.Points()) graphs.statements += point.kind == flow::PointKind::Statement;
    }
  }
  return graphs;
}

// The least that any analysis of the model does: each record is looked at once.
std::size_t PassOver(const FlowModels& models) {
  std::size_t sum = 0;
  for (const auto& image : models.images) {
    for (const codemodel::NodeRecord& record : image->Nodes()) {
      sum += static_cast<std::size_t>(record.entity) + record.verb + record.declaration + record.last;
    }
  }
  return sum;
}

}  // namespace

void MeasureGraphs(const std::vector<FlowModels>& sets, Bars& bars) {
  fmt::print("{:<14} {:>8} {:>10} {:>10} {:>10} {:>12} {:>12}\n", "graphs", "lines", "statements", "points", "ms",
             "bytes/point", "to one pass");
  double first = 0, last = 0;
  for (const FlowModels& models : sets) {
    std::vector<double> building, passing;
    Graphs graphs;
    std::size_t sum = 0;
    for (int round = 0; round < kRounds; ++round) {
      const CpuStopwatch build;
      graphs = BuildAll(models);
      building.push_back(build.Seconds());
      const CpuStopwatch pass;
      sum += PassOver(models);
      passing.push_back(pass.Seconds());
    }
    const double seconds = Median(building);
    const auto statements = static_cast<double>(graphs.statements);
    last = static_cast<double>(graphs.bytes) / static_cast<double>(graphs.points);
    if (first == 0) first = last;
    // The sum is printed so that the pass has to be made.
    fmt::print("{:<14} {:>8} {:>10} {:>10} {:>10.2f} {:>12.0f} {:>12.1f} {}\n", models.name, models.lines,
               graphs.statements, graphs.points, seconds * 1000, last, seconds / Median(passing), sum == 0 ? "!" : "");
    std::fflush(stdout);
    bars.Add(fmt::format("graph_{}_us", models.name), seconds * 1e6 / statements, kMicrosecondsPerStatement);
  }
  bars.Add("graph_memory", last / first, kMemoryGrowth);
}

}  // namespace qmrules::bench
