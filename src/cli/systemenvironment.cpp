#include "cli/systemenvironment.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "platform/error.h"
#include "workbench/workspace/settingsplaces.h"
#include "workbench/workspace/username.h"

namespace qmrules::cli {

namespace {

// Ctrl+C and the polite request to end stay pending and are asked for, so that nothing is cut off in the middle.
class SignalWatch final : public InterruptWatch {
 public:
  SignalWatch() {
    sigemptyset(&watched_);
    sigaddset(&watched_, SIGINT);
    sigaddset(&watched_, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &watched_, &before_);
  }
  SignalWatch(const SignalWatch&) = delete;
  SignalWatch& operator=(const SignalWatch&) = delete;
  ~SignalWatch() override {
    // A signal that was heeded must not end the program afterwards.
    const timespec atOnce{};
    while (heeded_ && ::sigtimedwait(&watched_, nullptr, &atOnce) > 0) continue;
    ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }

  bool Interrupted() override {
    sigset_t pending;
    sigemptyset(&pending);
    ::sigpending(&pending);
    heeded_ = heeded_ || sigismember(&pending, SIGINT) == 1 || sigismember(&pending, SIGTERM) == 1;
    return heeded_;
  }

 private:
  sigset_t watched_{};
  sigset_t before_{};
  bool heeded_ = false;
};

std::string ProgramFolder() {
  std::error_code failed;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", failed);
  if (failed) throw platform::Error(fmt::format("The program's own folder cannot be found: {}.", failed.message()));
  return program.parent_path().string();
}

// In place of this program, so that signals and the exit code pass without a go-between.
int RunProgram(const std::string& path, const std::vector<std::string>& arguments) {
  std::vector<std::string> words{path};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (auto& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  ::execv(path.c_str(), pointers.data());
  throw platform::Error(fmt::format("{} cannot be started: {}.", path, std::generic_category().message(errno)));
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
  environment.settingsPath =
      workbench::UserSettingsPath(environment.Variable("XDG_CONFIG_HOME"), environment.Variable("HOME"));
  environment.registryPath = workbench::kRegistryPath;
  environment.outIsTerminal = ::isatty(STDOUT_FILENO) == 1;
  environment.errIsTerminal = ::isatty(STDERR_FILENO) == 1;
  environment.programFolder = ProgramFolder();
  environment.runProgram = RunProgram;
  environment.watchInterrupts = [] { return std::make_unique<SignalWatch>(); };
  return environment;
}

}  // namespace qmrules::cli
