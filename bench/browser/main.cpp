#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

#include "browser/browserparts.h"
#include "browser/clicking.h"
#include "browser/control.h"
#include "browser/selecting.h"
#include "browser/showing.h"
#include "browser/timetable.h"
#include "browser/workspace.h"
#include "catalogue/catalogue.h"

namespace {

using namespace qmrules::bench;  // NOLINT(google-build-using-namespace): the program is of this namespace alone

struct Settings {
  int rules = 1000000;
  std::string folder = "build/bench-data";
};

void Run(const Settings& settings) {
  std::filesystem::create_directories(settings.folder);
  const int functions = std::max(1, (settings.rules + kRulesPerFunction - 1) / kRulesPerFunction);
  const auto catalogue = OpenOrGenerate(settings.folder, functions);
  const auto host = OpenWorkspace(settings.folder, catalogue);
  auto& repository = host->Repository();
  TimeTable table;
  table.PrintHeading();
  {
    Control control(*host);
    MeasureShowing(control, repository, catalogue, table);
    MeasureExpansionAndClicks(control, repository, catalogue, table);
  }
  BrowserParts parts(*host);
  MeasureSelecting(parts, repository, catalogue, table);
  table.PrintBars();
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App application("Measures what the user does in the catalogue's tree beside the bare fetch of what it shows.");
  Settings settings;
  application
      .add_option("--rules", settings.rules,
                  "Rules in the catalogue; rounded up to whole functions of 1,000 (default: 1000000)")
      ->check(CLI::Range(1, 10000000));
  application.add_option("--folder", settings.folder,
                         "Where the generated catalogue and its sources are kept (default: build/bench-data)");
  CLI11_PARSE(application, argc, argv);
  try {
    Run(settings);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bench_browser: %s\n", failure.what());
    return 1;
  }
  return 0;
}
