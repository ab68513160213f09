#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

#include "bars.h"
#include "validation/driving.h"
#include "validation/indexing.h"

namespace {

using namespace qmrules::bench;  // NOLINT(google-build-using-namespace): the program is of this namespace alone

struct Settings {
  std::string only;
  std::string folder = "build/bench-data";
  int files = 1'000;
  int rounds = 5;
};

void Run(const Settings& settings) {
  Bars bars;
  const auto isWanted = [&settings](const char* group) { return settings.only.empty() || settings.only == group; };
  if (isWanted("growth")) MeasureGrowth(bars);
  if (isWanted("repeats")) MeasureRepeats(bars);
  if (isWanted("searches")) MeasureSearches(bars);
  const bool isAnyRun = isWanted("comparing") || isWanted("moving") || isWanted("writing");
  if (isAnyRun) {
    std::filesystem::create_directories(settings.folder);
    Workload workload(settings.folder, settings.files);
    if (isWanted("comparing")) MeasureComparing(workload, settings.rounds, bars);
    if (isWanted("moving")) MeasureMoving(workload, settings.rounds, bars);
    if (isWanted("writing")) MeasureWriting(workload, settings.rounds, bars);
  }
  bars.Print();
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App application("Measures the validation of rules.");
  Settings settings;
  application.add_option("--only", settings.only, "One group of measurements")
      ->check(CLI::IsMember({"growth", "repeats", "searches", "comparing", "moving", "writing"}));
  application.add_option("--folder", settings.folder,
                         "Where the generated workspace is kept (default: build/bench-data)");
  application
      .add_option("--files", settings.files,
                  "Sources of 10,000 lines, each with 100 rules of each kind (default: 1000)")
      ->check(CLI::Range(1, 9'999));
  application.add_option("--rounds", settings.rounds, "Rounds of the runs over all rules (default: 5)")
      ->check(CLI::Range(1, 99));
  CLI11_PARSE(application, argc, argv);
  try {
    Run(settings);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bench_validation: %s\n", failure.what());
    return 1;
  }
  return 0;
}
