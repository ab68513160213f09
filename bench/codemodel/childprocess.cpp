#include "codemodel/childprocess.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

#include "stopwatch.h"

namespace qmrules::bench {

double RunChild(const std::vector<std::string>& words, const std::string& output) {
  std::vector<char*> arguments;
  for (const auto& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  const Stopwatch stopwatch;
  pid_t child = 0;
  const int failure = posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (failure != 0) throw std::runtime_error(fmt::format("{} cannot be started.", words[0]));
  int status = 0;
  if (waitpid(child, &status, 0) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    throw std::runtime_error(fmt::format("{} failed.", fmt::join(words, " ")));
  }
  return stopwatch.Seconds();
}

}  // namespace qmrules::bench
