#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <string>

#include "bars.h"
#include "codemodel/generatedprogram.h"
#include "dataflow/conditions.h"
#include "dataflow/flowmodels.h"
#include "dataflow/graphs.h"
#include "dataflow/oracle.h"
#include "dataflow/questions.h"
#include "dataflow/reference.h"

namespace {

using namespace qmrules::bench;  // NOLINT(google-build-using-namespace): the program is of this namespace alone

constexpr std::uint32_t kSeed = 7;
constexpr const char* kOracle = "oracle";

struct Settings {
  std::string nist = "build/testdata/nist";
  std::string only;
  OracleRun oracle;
};

bool IsWanted(const Settings& settings, const std::string& group) {
  return settings.only.empty() || settings.only == group;
}

FlowModels GeneratedModels(const std::string& name, std::uint32_t lines) {
  return ModelsOf({name, {{name + ".cbl", GenerateProgram(lines, kSeed, Performing::LaterParagraphs)}}});
}

void Measure(const Settings& settings, Bars& bars) {
  const std::vector<FlowModels> generated{GeneratedModels("3k", 3'000), GeneratedModels("30k", 30'000),
                                          GeneratedModels("100k", 100'000)};
  std::vector<FlowModels> sets = generated;
  if (IsWanted(settings, "graphs") || IsWanted(settings, "reference")) {
    sets.push_back(ModelsOf(ReadPrograms("nist", settings.nist, ".CBL")));
  }
  if (IsWanted(settings, "graphs")) MeasureGraphs(sets, bars);
  if (IsWanted(settings, "conditions")) MeasureConditions(sets, bars);
  if (IsWanted(settings, "questions")) MeasureQuestions(generated, bars);
  if (IsWanted(settings, "reference")) CompareWithPlainSolver(sets, bars);
}

void Run(const Settings& settings) {
  Bars bars;
  if (settings.only == kOracle) {
    RunOracle(settings.oracle, bars);
  } else {
    Measure(settings, bars);
  }
  bars.Print();
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App application("Measures the control flow and the use-definition chains of COBOL programs.");
  Settings settings;
  application.add_option(
      "--nist", settings.nist,
      "The folder of the NIST programs (default: build/testdata/nist, where script/bootstrap puts them)");
  application
      .add_option("--only", settings.only,
                  "One group of measurements; the oracle, which runs random programs and takes long, only by its name")
      ->check(CLI::IsMember({"graphs", "conditions", "questions", "reference", kOracle}));
  application.add_option("--programs", settings.oracle.programs, "How many programs the oracle runs (default: 2000)")
      ->check(CLI::PositiveNumber);
  application.add_option("--first", settings.oracle.first, "The seed of its first program (default: 1)");
  CLI11_PARSE(application, argc, argv);
  try {
    Run(settings);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bench_dataflow: %s\n", failure.what());
    return 1;
  }
  return 0;
}
