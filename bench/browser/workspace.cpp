#include "browser/workspace.h"

#include <fmt/format.h>

#include <chrono>
#include <filesystem>

#include "platform/filesystem.h"
#include "workbench/repository/sqliteconnection.h"

namespace qmrules::bench {

namespace {

namespace fs = std::filesystem;
using workbench::EmbeddedHost;
using workbench::HostServices;

HostServices ServicesIn(const std::string& folder) {
  return {.clock = BenchClock(),
          .userName = kUser,
          .settingsPath = folder + "/settings.json",
          .registryPath = folder + "/registry.json",
          .connect = {}};
}

// A sweep that finds a younger file would write to the catalogue.
bool IsOldEnough(const platform::FileSystem& files, const std::string& path) {
  return files.Exists(path) && files.DateLastModified(path) < BenchClock().Now();
}

void Age(const std::string& path) {
  const std::chrono::sys_seconds validated(std::chrono::seconds(BenchClock().Now().seconds));
  fs::last_write_time(path, std::chrono::file_clock::from_sys(validated - std::chrono::days(30)));
}

void MakeSources(EmbeddedHost& host, const Catalogue& catalogue) {
  auto& files = host.FileSystem();
  for (int number = 0; number < catalogue.Programs(); ++number) {
    const ProgramContent program = MakeProgram(number);
    const std::string path = host.PathOf(program.fileName);
    if (IsOldEnough(files, path)) continue;
    files.CreateFolder(fs::path(path).parent_path().string());
    files.WriteFile(path, fmt::format("       IDENTIFICATION DIVISION.\n       PROGRAM-ID. {}.\n", program.name));
    Age(path);
  }
}

}  // namespace

std::unique_ptr<EmbeddedHost> OpenWorkspace(const std::string& folder, const Catalogue& catalogue) {
  const std::string workspace = fs::absolute(fmt::format("{}/workspace-{}", folder, catalogue.Rules())).string();
  HostServices services = ServicesIn(folder);
  if (!fs::exists(workspace)) {
    EmbeddedHost::CreateWorkspace({.folder = workspace, .projectName = kProject, .sourceEncoding = ""}, services);
  }
  services.connect = [path = catalogue.path](const std::string&) {
    return workbench::repository::OpenSqliteConnection(path, workbench::repository::Durability::Full);
  };
  auto host = std::make_unique<EmbeddedHost>(workspace, services);
  MakeSources(*host, catalogue);
  return host;
}

}  // namespace qmrules::bench
