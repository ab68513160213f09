#include "cli/systemenvironment.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <system_error>

#include "platform/error.h"
#include "workbench/workspace/username.h"

namespace qmrules::cli {

namespace {

std::string SettingsPath(const CliEnvironment& environment) {
  const std::string config = environment.Variable("XDG_CONFIG_HOME");
  const std::string folder = config.empty() ? environment.Variable("HOME") + "/.config" : config;
  return folder + "/qmrules/settings.json";
}

}  // namespace

CliEnvironment SystemEnvironment(const platform::Clock& clock) {
  CliEnvironment environment{.out = std::cout, .err = std::cerr, .clock = clock};
  std::error_code failed;
  environment.currentFolder = std::filesystem::current_path(failed).string();
  if (failed) throw platform::Error(fmt::format("There is no current folder: {}.", failed.message()));
  for (const char* name :
       {"LC_ALL", "LC_MESSAGES", "LANG", "NO_COLOR", "QMRULES_WORKSPACE", "XDG_CONFIG_HOME", "HOME"}) {
    if (const char* const value = std::getenv(name)) environment.variables[name] = value;
  }
  environment.userName = workbench::SystemUserName();
  environment.settingsPath = SettingsPath(environment);
  environment.registryPath = "/etc/qmrules/registry.json";
  environment.outIsTerminal = ::isatty(STDOUT_FILENO) == 1;
  return environment;
}

}  // namespace qmrules::cli
