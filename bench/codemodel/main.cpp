#include <malloc.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

#include "bars.h"
#include "codemodel/modelfiles.h"
#include "codemodel/processes.h"
#include "codemodel/programs.h"
#include "codemodel/reading.h"
#include "codemodel/scanning.h"

namespace {

using namespace qmrules::bench;  // NOLINT(google-build-using-namespace): the program is of this namespace alone

struct Settings {
  std::string nist = "build/testdata/nist";
  std::string folder = "build/bench-data";
  std::string only;
  std::string translate;
};

bool IsWanted(const Settings& settings, const std::string& group) {
  return settings.only.empty() || settings.only == group;
}

void Run(const Settings& settings, const std::string& self) {
  std::filesystem::create_directories(settings.folder);
  const auto nist = ReadPrograms("nist", settings.nist, ".CBL");
  const auto middling = Generated("generated_30k", 30'000);
  const auto large = Generated("generated_300k", 300'000);
  Bars bars;
  if (IsWanted(settings, "reading")) MeasureReading({nist, middling, large}, settings.folder, bars);
  if (IsWanted(settings, "processes")) {
    MeasureBesideCompiler(self, middling, settings.folder, bars);
    MeasureMemory(self, middling, settings.folder, bars);
    MeasureMemory(self, large, settings.folder, bars);
  }
  if (IsWanted(settings, "opening")) MeasureOpening(middling, settings.folder, bars);
  if (IsWanted(settings, "scanning")) MeasureScanning({nist, middling}, settings.folder, bars);
  bars.Print();
}

// Keeps freed memory in the process, for large pieces as for small ones: otherwise the large program's pieces, and they
// alone, are fetched from the system anew in each round, and the fetching is measured along.
void KeepMemory() {
  constexpr int never = -1;
  mallopt(M_MMAP_MAX, 0);
  mallopt(M_TRIM_THRESHOLD, never);
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App application("Measures the reading and modelling of COBOL programs.");
  Settings settings;
  application.add_option(
      "--nist", settings.nist,
      "The folder of the NIST programs (default: build/testdata/nist, where script/bootstrap puts them)");
  application.add_option("--folder", settings.folder, "For files that a run needs (default: build/bench-data)");
  application.add_option("--only", settings.only, "One group of measurements")
      ->check(CLI::IsMember({"reading", "processes", "opening", "scanning"}));
  application.add_option("--translate", settings.translate, "Measure nothing: model this program and end");
  CLI11_PARSE(application, argc, argv);
  try {
    if (settings.translate.empty()) {
      KeepMemory();
      Run(settings, std::filesystem::canonical("/proc/self/exe").string());
    } else {
      TranslateFile(settings.translate);
    }
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bench_codemodel: %s\n", failure.what());
    return 1;
  }
  return 0;
}
