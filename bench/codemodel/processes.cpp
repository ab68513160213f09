#include "codemodel/processes.h"

#include <fmt/format.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "codemodel/childprocess.h"
#include "stopwatch.h"
#include "workbench/codemodel/cobol/cobolfrontend.h"

namespace qmrules::bench {

namespace {

constexpr int kRounds = 11;
constexpr double kCompilerLimit = 0.125;
constexpr double kMemoryLimit = 40;

std::string WriteProgram(const ProgramSet& set, const std::string& folder) {
  const std::string path = folder + "/" + set.programs.front().name;
  std::ofstream(path, std::ios::binary) << set.programs.front().text;
  return path;
}

// Of this process, in bytes. (What the system counts for a child that was waited for has its parent's memory in it.)
std::size_t PeakMemory() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmHWM:")) return std::stoul(line.substr(6)) * 1024;
  }
  throw std::runtime_error("The system does not tell the peak of memory.");
}

}  // namespace

void TranslateFile(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) throw std::runtime_error(path + " cannot be read.");
  const ProgramSet set{"file", {{path, {std::istreambuf_iterator<char>(stream), {}}}}};
  SetProvider provider(set);
  workbench::codemodel::cobol::CobolFrontEnd frontEnd(provider, {});
  if (frontEnd.Translate(path, [] { return false; }).empty()) throw std::runtime_error(path + " holds no program.");
  fmt::print("{}\n", PeakMemory());
}

void MeasureBesideCompiler(const std::string& self, const ProgramSet& set, const std::string& folder, Bars& bars) {
  const std::string path = WriteProgram(set, folder);
  std::vector<double> ours, compilers;
  for (int round = 0; round < kRounds; ++round) {
    ours.push_back(RunChild({self, "--translate", path}, "/dev/null"));
    compilers.push_back(RunChild({"cobc", "-fsyntax-only", "-std=ibm", path}, "/dev/null"));
  }
  std::filesystem::remove(path);
  fmt::print("{}: our process {:.1f} ms, the compiler's syntax check {:.1f} ms\n", set.name, Median(ours) * 1000,
             Median(compilers) * 1000);
  bars.Add("beside_compiler", Median(ours) / Median(compilers), kCompilerLimit);
}

void MeasureMemory(const std::string& self, const ProgramSet& set, const std::string& folder, Bars& bars) {
  const std::string path = WriteProgram(set, folder);
  const std::string output = path + ".peak";
  RunChild({self, "--translate", path}, output);
  double peak = 0;
  std::ifstream(output) >> peak;
  std::filesystem::remove(output);
  std::filesystem::remove(path);
  const auto bytes = static_cast<double>(set.Bytes());
  fmt::print("{}: {:.1f} MiB of source, {:.1f} MiB at the peak\n", set.name, bytes / 1048576, peak / 1048576);
  bars.Add("memory_" + set.name, peak / bytes, kMemoryLimit);
}

}  // namespace qmrules::bench
