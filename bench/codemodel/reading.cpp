#include "codemodel/reading.h"

#include <fmt/format.h>

#include <cstdio>
#include <filesystem>

#include "stopwatch.h"
#include "workbench/codemodel/cobol/cobolfrontend.h"
#include "workbench/codemodel/cobol/reading/lexer.h"
#include "workbench/codemodel/cobol/reading/words.h"
#include "workbench/codemodel/modelfile.h"

namespace qmrules::bench {

namespace {

namespace codemodel = workbench::codemodel;
namespace cobol = codemodel::cobol;

constexpr double kModelLimit = 5;
constexpr double kFileLimit = 8;
constexpr double kGrowthLimit = 1.3;

// Each routine answers with something that depends on all of its work.

std::size_t LexAll(const ProgramSet& set) {
  codemodel::SymbolTable symbols(cobol::CobolWordList());
  std::size_t tokens = 0;
  for (const auto& program : set.programs) {
    auto file = std::make_shared<codemodel::SourceFile>(program.name, program.text);
    tokens += cobol::Lex(std::move(file), {}, symbols).tokens.size();
  }
  return tokens;
}

std::size_t ModelAll(const ProgramSet& set, const std::string* folder) {
  SetProvider provider(set);
  cobol::CobolFrontEnd frontEnd(provider, {});
  std::size_t nodes = 0;
  for (const auto& text : set.programs) {
    for (const auto& program : frontEnd.Translate(text.name, [] { return false; })) {
      nodes += program.model.nodes.size();
      if (folder)
        codemodel::WriteModelFile(fmt::format("{}/{}.{}.model", *folder, text.name, program.name), program.model);
    }
  }
  return nodes;
}

struct Times {
  double lexing = 0;
  double modelling = 0;
  double writing = 0;  // modelling included
};

Times Measure(const ProgramSet& set, const std::string& folder) {
  const int rounds = set.Lines() > 200'000 ? 5 : 11;
  std::vector<double> lexing, modelling, writing;
  std::size_t tokens = 0, nodes = 0;
  for (int round = 0; round < rounds; ++round) {
    const Stopwatch lex;
    tokens = LexAll(set);
    lexing.push_back(lex.Seconds());
    const Stopwatch model;
    nodes = ModelAll(set, nullptr);
    modelling.push_back(model.Seconds());
    const Stopwatch write;
    ModelAll(set, &folder);
    writing.push_back(write.Seconds());
  }
  const Times times{Median(lexing), Median(modelling), Median(writing)};
  const auto lines = static_cast<double>(set.Lines());
  fmt::print("{:<16} {:>8} {:>9} {:>9} {:>9.1f} {:>9.1f} {:>9.1f} {:>12.0f}\n", set.name, set.Lines(), tokens, nodes,
             times.lexing * 1000, times.modelling * 1000, times.writing * 1000, lines / times.modelling);
  std::fflush(stdout);
  return times;
}

}  // namespace

void MeasureReading(const std::vector<ProgramSet>& sets, const std::string& folder, Bars& bars) {
  fmt::print("{:<16} {:>8} {:>9} {:>9} {:>9} {:>9} {:>9} {:>12}\n", "programs", "lines", "tokens", "nodes", "lex ms",
             "model ms", "file ms", "lines/s");
  std::vector<double> perLine;
  for (const auto& set : sets) {
    const std::string models = folder + "/models-" + set.name;
    std::filesystem::create_directories(models);
    const Times times = Measure(set, models);
    std::filesystem::remove_all(models);
    bars.Add("model_" + set.name, times.modelling / times.lexing, kModelLimit);
    bars.Add("file_" + set.name, times.writing / times.lexing, kFileLimit);
    perLine.push_back(times.modelling / static_cast<double>(set.Lines()));
  }
  if (perLine.size() > 1) bars.Add("growth", perLine.back() / perLine[perLine.size() - 2], kGrowthLimit);
}

}  // namespace qmrules::bench
