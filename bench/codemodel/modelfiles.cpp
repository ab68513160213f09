#include "codemodel/modelfiles.h"

#include <fmt/format.h>

#include <filesystem>

#include "stopwatch.h"
#include "workbench/codemodel/cobol/cobolfrontend.h"
#include "workbench/codemodel/modelfile.h"

namespace qmrules::bench {

namespace {

namespace codemodel = workbench::codemodel;

constexpr int kRounds = 21;
constexpr double kOpenLimit = 5;

}  // namespace

void MeasureOpening(const ProgramSet& set, const std::string& folder, Bars& bars) {
  SetProvider provider(set);
  codemodel::cobol::CobolFrontEnd frontEnd(provider, {});
  const std::string path = folder + "/" + set.name + ".model";
  codemodel::WriteModelFile(path, frontEnd.Translate(set.programs.front().name, [] { return false; }).front().model);
  std::vector<double> times;
  std::size_t nodes = 0;
  for (int round = 0; round < kRounds; ++round) {
    const Stopwatch stopwatch;
    nodes = codemodel::ModelImage::Open(path)->Nodes().size();
    times.push_back(stopwatch.Seconds());
  }
  fmt::print("{}: a model file of {:.1f} MiB with {} nodes opens in {:.2f} ms\n", set.name,
             static_cast<double>(std::filesystem::file_size(path)) / 1048576, nodes, Median(times) * 1000);
  std::filesystem::remove(path);
  bars.Add("open_ms", Median(times) * 1000, kOpenLimit);
}

}  // namespace qmrules::bench
