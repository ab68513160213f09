// Where data items lie, as compiled programs print it of themselves.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <mutex>
#include <thread>

#include "workbench/codemodel/cobol/programs/layoutprobe.h"
#include "workbench/codemodel/cobol/programs/programfiles.h"

namespace qmrules::test {
namespace {

namespace fs = std::filesystem;

struct CommandResult {
  bool succeeded = false;
  std::string output;
};

CommandResult RunCommand(const std::string& command) {
  CommandResult result;
  FILE* const pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return {false, "The command cannot be started."};
  std::array<char, 4096> buffer{};
  while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
    result.output.append(buffer.data(), count);
  }
  result.succeeded = pclose(pipe) == 0;
  return result;
}

// Compiles and runs probes, some at a time.
class ProbeRun {
 public:
  ProbeRun(std::vector<LayoutProbe> probes, std::string folder)
      : probes_(std::move(probes)), folder_(std::move(folder)) {
    fs::create_directories(folder_);
  }

  void Run() {
    std::vector<std::jthread> workers;
    for (unsigned worker = 0; worker < std::max(2U, std::thread::hardware_concurrency()); ++worker) {
      workers.emplace_back([this] {
        for (std::size_t next = next_++; next < probes_.size(); next = next_++) Check(probes_[next]);
      });
    }
  }

  std::size_t Items() const { return items_; }
  const std::string& Differences() const { return differences_; }
  // Files whose probe is refused by the compiler.
  const std::vector<std::string>& Refused() const { return refused_; }

 private:
  void Check(const LayoutProbe& probe);

  std::vector<LayoutProbe> probes_;
  std::string folder_;
  std::atomic<std::size_t> next_ = 0;
  std::mutex mutex_;
  std::size_t items_ = 0;
  std::string differences_;
  std::vector<std::string> refused_;
};

void ProbeRun::Check(const LayoutProbe& probe) {
  const std::string path = folder_ + "/" + probe.name;
  std::ofstream(path + ".cob") << probe.text;
  const CommandResult compiled = RunCommand(fmt::format("cobc -x -free -std=ibm -w -o '{0}.run' '{0}.cob' 2>&1", path));
  std::vector<ItemPlace> printed;
  std::string output;
  if (compiled.succeeded) {
    output = RunCommand(fmt::format("cd '{}' && '{}.run' 2>&1", folder_, path)).output;
    printed = PrintedPlaces(probe, output);
    fs::remove(path + ".run");
  }
  const std::lock_guard lock(mutex_);
  if (!compiled.succeeded) {
    refused_.push_back(probe.name.substr(0, probe.name.rfind('-')));
    return;
  }
  items_ += printed.size();
  for (const std::string& diagnostic : probe.diagnostics) {
    differences_ += fmt::format("{}: {}\n", probe.name, diagnostic);
  }
  if (printed.size() != probe.expected.size()) {
    differences_ += fmt::format("{}: {} of {} items printed: {}\n", probe.name, printed.size(), probe.expected.size(),
                                output.substr(output.size() - std::min<std::size_t>(output.size(), 200)));
  }
  for (std::size_t index = 0; index < std::min(printed.size(), probe.expected.size()); ++index) {
    const ItemPlace& ours = probe.expected[index];
    if (ours == printed[index]) continue;
    differences_ += fmt::format("{}: {} lies at {} with {} bytes, not at {} with {}\n", probe.name, ours.item,
                                printed[index].offset, printed[index].size, ours.offset, ours.size);
  }
}

std::vector<LayoutProbe> ProbesOfAll(ProgramFiles& files) {
  std::vector<LayoutProbe> probes;
  for (const std::string& program : files.programs) {
    for (LayoutProbe& probe : ProbesOf(files.sources, program)) probes.push_back(std::move(probe));
  }
  return probes;
}

TEST(CompiledLayout, AgreesWithOursForTheSamples) {
  ProgramFiles files = SampleFiles();
  ProbeRun run(ProbesOfAll(files), QMRULES_SCRATCH "/samples");
  run.Run();
  EXPECT_EQ(run.Differences(), "");
  EXPECT_EQ(run.Refused(), std::vector<std::string>());
  EXPECT_GT(run.Items(), 1000U);
}

TEST(CompiledLayout, AgreesWithOursForAllNistProgramsThatTheCompilerTakes) {
  ProgramFiles files = NistFiles();
  ProbeRun run(ProbesOfAll(files), QMRULES_SCRATCH "/nist");
  run.Run();
  EXPECT_EQ(run.Differences(), "");
  EXPECT_GT(run.Items(), 30'000U);
  for (const std::string& file : run.Refused()) {
    EXPECT_FALSE(RunCommand(fmt::format("cobc -fsyntax-only -std=ibm -w '{}/{}' 2>&1", NistFolder(), file)).succeeded)
        << file;
  }
}

}  // namespace
}  // namespace qmrules::test
