#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <string>

#include "bars.h"
#include "validation/indexing.h"

namespace {

using namespace qmrules::bench;  // NOLINT(google-build-using-namespace): the program is of this namespace alone

void Run(const std::string& only) {
  Bars bars;
  const auto isWanted = [&only](const char* group) { return only.empty() || only == group; };
  if (isWanted("growth")) MeasureGrowth(bars);
  if (isWanted("repeats")) MeasureRepeats(bars);
  if (isWanted("searches")) MeasureSearches(bars);
  bars.Print();
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App application("Measures the validation of rules.");
  std::string only;
  application.add_option("--only", only, "One group of measurements")
      ->check(CLI::IsMember({"growth", "repeats", "searches"}));
  CLI11_PARSE(application, argc, argv);
  try {
    Run(only);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bench_validation: %s\n", failure.what());
    return 1;
  }
  return 0;
}
