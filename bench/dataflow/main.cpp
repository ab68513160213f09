#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <string>

#include "bars.h"
#include "codemodel/generatedprogram.h"
#include "flow/conditions.h"
#include "flow/flowmodels.h"
#include "flow/graphs.h"
#include "flow/questions.h"
#include "flow/reference.h"

namespace {

using namespace qmrules::bench;  // NOLINT(google-build-using-namespace): the program is of this namespace alone

constexpr std::uint32_t kSeed = 7;

struct Settings {
  std::string nist = "build/testdata/nist";
  std::string only;
};

bool IsWanted(const Settings& settings, const std::string& group) {
  return settings.only.empty() || settings.only == group;
}

FlowModels GeneratedModels(const std::string& name, std::uint32_t lines) {
  return ModelsOf({name, {{name + ".cbl", GenerateProgram(lines, kSeed, Performing::LaterParagraphs)}}});
}

void Run(const Settings& settings) {
  const std::vector<FlowModels> generated{GeneratedModels("3k", 3'000), GeneratedModels("30k", 30'000),
                                          GeneratedModels("100k", 100'000)};
  Bars bars;
  std::vector<FlowModels> sets = generated;
  if (IsWanted(settings, "graphs") || IsWanted(settings, "reference")) {
    sets.push_back(ModelsOf(ReadPrograms("nist", settings.nist, ".CBL")));
  }
  if (IsWanted(settings, "graphs")) MeasureGraphs(sets, bars);
  if (IsWanted(settings, "conditions")) MeasureConditions(sets, bars);
  if (IsWanted(settings, "questions")) MeasureQuestions(generated, bars);
  if (IsWanted(settings, "reference")) CompareWithPlainSolver(sets, bars);
  bars.Print();
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App application("Measures the control flow and the use-definition chains of COBOL programs.");
  Settings settings;
  application.add_option(
      "--nist", settings.nist,
      "The folder of the NIST programs (default: build/testdata/nist, where script/bootstrap puts them)");
  application.add_option("--only", settings.only, "One group of measurements")
      ->check(CLI::IsMember({"graphs", "conditions", "questions", "reference"}));
  CLI11_PARSE(application, argc, argv);
  try {
    Run(settings);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bench_flow: %s\n", failure.what());
    return 1;
  }
  return 0;
}
