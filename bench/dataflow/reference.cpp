#include "dataflow/reference.h"

#include <fmt/format.h>

#include <cstdio>

#include "stopwatch.h"
#include "workbench/flow/referencecheck.h"

namespace qmrules::bench {

namespace {

constexpr std::uint32_t kMostRows = 3'100;  // the generated program of 3,000 lines has a few more
constexpr double kQuestionLimit = 0.1;

}  // namespace

void CompareWithPlainSolver(const std::vector<FlowModels>& sets, Bars& bars) {
  fmt::print("\n{:<14} {:>9} {:>10} {:>10} {:>12} {:>12} {:>12}\n", "plain solver", "programs", "links", "questions",
             "solver, s", "questions, s", "differences");
  std::vector<double> ratios;
  int differences = 0;
  for (const FlowModels& set : sets) {
    test::ReferenceComparison sum;
    int programs = 0;
    int different = 0;
    for (const auto& image : set.images) {
      if (image->Rows() > kMostRows) continue;
      ++programs;
      for (std::uint32_t unit = 0; unit < image->Units().size(); ++unit) {
        const auto compared = test::CompareWithReference(*image, unit);
        sum.links += compared.links;
        sum.questions += compared.questions;
        sum.referenceSeconds += compared.referenceSeconds;
        sum.questionSeconds += compared.questionSeconds;
        if (compared.questions > 0 && compared.referenceSeconds > 0) {
          ratios.push_back(compared.questionSeconds / static_cast<double>(compared.questions) /
                           compared.referenceSeconds);
        }
        if (compared.difference.empty()) continue;
        ++different;
        fmt::print("  {}: {}\n", image->FileName(0), compared.difference);
      }
    }
    differences += different;
    fmt::print("{:<14} {:>9} {:>10} {:>10} {:>12.2f} {:>12.2f} {:>12}\n", set.name, programs, sum.links, sum.questions,
               sum.referenceSeconds, sum.questionSeconds, different);
    std::fflush(stdout);
  }
  bars.Add("reference_differences", differences, 0);
  if (!ratios.empty()) bars.Add("question_to_reference", Median(ratios), kQuestionLimit);
}

}  // namespace qmrules::bench
