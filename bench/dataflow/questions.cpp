#include "dataflow/questions.h"

#include <fmt/format.h>
#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <numeric>

#include "stopwatch.h"
#include "workbench/flow/programflow.h"

namespace qmrules::bench {

namespace {

namespace flow = workbench::flow;
namespace codemodel = workbench::codemodel;

constexpr std::size_t kQuestions = 1000;
constexpr double kFirstLimit = 100;
constexpr double kFurtherLimit = 5;
constexpr double kGrowthLimit = 2;
constexpr double kMemoryLimit = 1.2;

struct Answers {
  double first = 0;              // seconds of processor time
  double median = 0, worst = 0;  // of further backward questions
  double mean = 0;               // of the same
  double forward = 0;            // median
  double links = 0;              // of a backward question, on the average
  double bytesPerLine = 0;
};

std::size_t BytesInUse() {
  return mallinfo2().uordblks;
}

Answers Ask(const FlowModels& program) {
  const auto& image = program.images.front();
  const std::vector<codemodel::NodeId> uses = UsesOf(*image, kQuestions);
  Answers answers;
  const std::size_t before = BytesInUse();
  const CpuStopwatch first;
  flow::ProgramFlow questions(image, 0);
  std::size_t links = questions.DefinitionsReaching(uses[uses.size() / 2]).links.size();
  answers.first = first.Seconds();
  std::vector<double> backward, forward;
  std::vector<codemodel::NodeId> definitions;
  for (const codemodel::NodeId use : uses) {
    const CpuStopwatch time;
    const flow::Chain chain = questions.DefinitionsReaching(use);
    backward.push_back(time.Seconds());
    links += chain.links.size();
    if (!chain.links.empty()) definitions.push_back(chain.links.front().definition);
  }
  answers.bytesPerLine = static_cast<double>(BytesInUse() - before) / static_cast<double>(program.lines);
  for (const codemodel::NodeId definition : definitions) {
    const CpuStopwatch time;
    links += questions.UsesReached(definition).links.empty() ? 1 : 0;
    forward.push_back(time.Seconds());
  }
  answers.median = Median(backward);
  answers.worst = *std::ranges::max_element(backward);
  answers.mean = std::accumulate(backward.begin(), backward.end(), 0.0) / static_cast<double>(backward.size());
  answers.forward = forward.empty() ? 0 : Median(forward);
  answers.links = static_cast<double>(links) / static_cast<double>(uses.size());
  return answers;
}

}  // namespace

void MeasureQuestions(const std::vector<FlowModels>& programs, Bars& bars) {
  fmt::print("\n{:<14} {:>8} {:>10} {:>10} {:>10} {:>10} {:>10} {:>8} {:>10}\n", "questions, ms", "lines", "first",
             "further", "mean", "worst", "forward", "links", "bytes/line");
  std::vector<Answers> all;
  for (const FlowModels& program : programs) {
    const Answers& answers = all.emplace_back(Ask(program));
    fmt::print("{:<14} {:>8} {:>10.2f} {:>10.3f} {:>10.3f} {:>10.2f} {:>10.3f} {:>8.1f} {:>10.0f}\n", program.name,
               program.lines, answers.first * 1000, answers.median * 1000, answers.mean * 1000, answers.worst * 1000,
               answers.forward * 1000, answers.links, answers.bytesPerLine);
    std::fflush(stdout);
  }
  bars.Add("first_ms", all[1].first * 1000, kFirstLimit);
  bars.Add("further_ms", all[1].median * 1000, kFurtherLimit);
  bars.Add("question_growth", all[2].median / all[1].median, kGrowthLimit);
  bars.Add("memory_growth", all[2].bytesPerLine / all[1].bytesPerLine, kMemoryLimit);
}

}  // namespace qmrules::bench
