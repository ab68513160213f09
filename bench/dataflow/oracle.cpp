#include "dataflow/oracle.h"

#include <fmt/format.h>

#include <array>
#include <cstdio>
#include <memory>
#include <regex>
#include <stdexcept>

namespace qmrules::bench {

namespace {

struct PipeCloser {
  void operator()(std::FILE* pipe) const { pclose(pipe); }
};

std::string Quoted(const std::string& word) {
  return fmt::format("'{}'", std::regex_replace(word, std::regex("'"), "'\\''"));
}

// The command's output, printed as it comes.
std::string Run(const std::string& command) {
  const std::unique_ptr<std::FILE, PipeCloser> pipe(popen(command.c_str(), "r"));
  if (!pipe) throw std::runtime_error(command + " cannot be started.");
  std::string output;
  std::array<char, 4096> line{};
  while (std::fgets(line.data(), static_cast<int>(line.size()), pipe.get()) != nullptr) {
    output += line.data();
    std::fputs(line.data(), stdout);
    std::fflush(stdout);
  }
  return output;
}

}  // namespace

void RunOracle(const OracleRun& run, Bars& bars) {
  const std::string output = Run(fmt::format("python3 {} --checker {} --programs {} --first {}", Quoted(run.script),
                                             Quoted(run.checker), run.programs, run.first));
  const std::regex result("(\\d+) programs, (\\d+) events checked, (\\d+) missed;");
  std::smatch numbers;
  if (!std::regex_search(output, numbers, result)) throw std::runtime_error(run.script + " has given no result.");
  if (numbers[2] == "0") throw std::runtime_error(run.script + " has checked nothing.");
  bars.Add("oracle_missed", std::stod(numbers[3]), 0);
  bars.Add("oracle_failed", run.programs - std::stod(numbers[1]), 0);
}

}  // namespace qmrules::bench
