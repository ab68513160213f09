#include "codemodel/scanning.h"

#include <fmt/format.h>
#include <xxhash.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "platform/clock.h"
#include "platform/diskfile.h"
#include "platform/recordingprogress.h"
#include "stopwatch.h"
#include "workbench/host/workspacescan.h"

namespace qmrules::bench {

namespace {

constexpr int kRounds = 11;
constexpr double kScanLimit = 1.5;
constexpr std::size_t kMostBytes = std::size_t{1} << 30;

// Writes the sources below the folder and gives their paths.
std::vector<std::string> WriteSources(const std::vector<ProgramSet>& sets, const std::string& folder) {
  std::vector<std::string> paths;
  for (const auto& set : sets) {
    std::filesystem::create_directories(folder + "/" + set.name);
    for (const auto& program : set.programs) {
      paths.push_back(fmt::format("{}/{}/{}", folder, set.name, program.name));
      std::ofstream(paths.back(), std::ios::binary) << program.text;
    }
  }
  return paths;
}

double HashAll(const std::vector<std::string>& paths) {
  const Stopwatch stopwatch;
  std::uint64_t sum = 0;
  for (const auto& path : paths) {
    const std::string bytes = platform::ReadDiskFile(path, kMostBytes);
    sum ^= XXH3_128bits(bytes.data(), bytes.size()).low64;
  }
  if (sum == 0) throw std::runtime_error("The sources cancel each other out.");
  return stopwatch.Seconds();
}

std::size_t CountUnchanged(const workbench::ScanReport& report) {
  return report.Count(workbench::ScannedModel::Outcome::Unchanged);
}

}  // namespace

void MeasureScanning(const std::vector<ProgramSet>& sets, const std::string& folder, Bars& bars) {
  const std::string root = folder + "/scan";
  std::filesystem::remove_all(root);
  const auto paths = WriteSources(sets, root);
  const platform::SystemClock clock;
  const workbench::HostServices services{clock, "bench", root + "/settings.json", root + "/registry.json", {}};
  workbench::EmbeddedHost::CreateWorkspace({root, "Benchmark", ""}, services);
  workbench::EmbeddedHost host(root, services);
  platform::RecordingProgress progress;
  const Stopwatch first;
  const std::size_t programs = ScanWorkspace(host, {}, progress).programs.size();
  const double firstSeconds = first.Seconds();

  const auto scan = [&](int jobs) {
    workbench::WorkspaceScan request;
    request.jobs = jobs;
    const Stopwatch stopwatch;
    const auto report = ScanWorkspace(host, request, progress);
    const double seconds = stopwatch.Seconds();
    if (CountUnchanged(report) + report.Count(workbench::ScannedModel::Outcome::Failed) != programs) {
      throw std::runtime_error("A scan of unchanged sources found changes.");
    }
    return seconds;
  };
  std::vector<double> scans, single, hashes;
  for (int round = 0; round < kRounds; ++round) {
    hashes.push_back(HashAll(paths));
    scans.push_back(scan(0));
    single.push_back(scan(1));
  }
  std::filesystem::remove_all(root);
  fmt::print(
      "{} programs: first scan {:.0f} ms; nothing changed {:.1f} ms, on one thread {:.1f} ms; hashing {:.1f} ms\n",
      programs, firstSeconds * 1000, Median(scans) * 1000, Median(single) * 1000, Median(hashes) * 1000);
  bars.Add("scan_unchanged", Median(scans) / Median(hashes), kScanLimit);
}

}  // namespace qmrules::bench
