#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

#include "catalogue/catalogue.h"
#include "catalogue/fetches.h"
#include "catalogue/memory.h"
#include "catalogue/search.h"
#include "catalogue/writing.h"

namespace {

using namespace qmrules::bench;  // NOLINT(google-build-using-namespace): the program is of this namespace alone

struct Settings {
  int rules = 1000000;
  std::string folder = "build/bench-data";
  std::string only;
};

bool IsWanted(const Settings& settings, const std::string& group) {
  return settings.only.empty() || settings.only == group;
}

void MeasureReading(const Settings& settings, Report& report) {
  const int functions = std::max(1, (settings.rules + kRulesPerFunction - 1) / kRulesPerFunction);
  const auto catalogue = OpenOrGenerate(settings.folder, functions);
  const auto repository = OpenRepository(catalogue.path);
  RawStore raw(catalogue.path);
  report.PrintHeading();
  if (IsWanted(settings, "fetches")) MeasureFetches(*repository, raw, catalogue, report);
  if (IsWanted(settings, "search")) MeasureSearch(*repository, raw, catalogue, report);
  if (IsWanted(settings, "memory")) MeasureMemory(*repository, catalogue, report);
}

void Run(const Settings& settings) {
  std::filesystem::create_directories(settings.folder);
  Report report;
  if (settings.only != "writing") MeasureReading(settings, report);
  if (IsWanted(settings, "writing")) MeasureWriting(settings.folder, report);
  report.PrintBars();
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App application("Measures the catalogue's store beside hand-written statements on the same file.");
  Settings settings;
  application
      .add_option("--rules", settings.rules,
                  "Rules in the catalogue; rounded up to whole functions of 1,000 (default: 1000000)")
      ->check(CLI::Range(1, 10000000));
  application.add_option("--folder", settings.folder,
                         "Where the generated catalogue is kept (default: build/bench-data)");
  application.add_option("--only", settings.only, "One group of measurements")
      ->check(CLI::IsMember({"fetches", "search", "memory", "writing"}));
  CLI11_PARSE(application, argc, argv);
  try {
    Run(settings);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bench_catalogue: %s\n", failure.what());
    return 1;
  }
  return 0;
}
