#include "cli/filterprogram.h"

#include <fmt/format.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

#include "platform/error.h"

namespace qmrules::cli {

namespace {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using UnnamedFile = std::unique_ptr<std::FILE, CloseFile>;

// A file without a name: between two of them no program waits for another.
UnnamedFile MakeFile(const std::string& program) {
  UnnamedFile file(std::tmpfile());
  if (file) return file;
  throw platform::Error(fmt::format("{} cannot be run: {}.", program, std::generic_category().message(errno)));
}

class FileActions {
 public:
  FileActions() { ::posix_spawn_file_actions_init(&actions_); }
  FileActions(const FileActions&) = delete;
  FileActions& operator=(const FileActions&) = delete;
  ~FileActions() { ::posix_spawn_file_actions_destroy(&actions_); }
  void Connect(const UnnamedFile& file, int stream) {
    ::posix_spawn_file_actions_adddup2(&actions_, ::fileno(file.get()), stream);
  }
  const posix_spawn_file_actions_t* Get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

std::string ReadAll(const UnnamedFile& file) {
  std::rewind(file.get());
  std::string text;
  char part[65536];
  for (std::size_t size = 0; (size = std::fread(part, 1, sizeof part, file.get())) > 0;) text.append(part, size);
  return text;
}

}  // namespace

std::string RunFilter(const std::string& program, const std::vector<std::string>& arguments, const std::string& input) {
  const UnnamedFile in = MakeFile(program), out = MakeFile(program);
  if (std::fwrite(input.data(), 1, input.size(), in.get()) != input.size() || std::fflush(in.get()) != 0) {
    throw platform::Error(fmt::format("{} cannot be given its input: the disk is full.", program));
  }
  std::rewind(in.get());
  std::vector<std::string> words{program};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (auto& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  FileActions actions;
  actions.Connect(in, STDIN_FILENO);
  actions.Connect(out, STDOUT_FILENO);
  pid_t child = 0;
  const int failure = ::posix_spawnp(&child, program.c_str(), actions.Get(), nullptr, pointers.data(), environ);
  if (failure == ENOENT) throw platform::Error(fmt::format("The program {} is missing.", program));
  if (failure != 0) {
    throw platform::Error(fmt::format("{} cannot be run: {}.", program, std::generic_category().message(failure)));
  }
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
  std::string text = ReadAll(out);
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0 || text.empty()) {
    throw platform::Error(fmt::format("{} has failed.", program));
  }
  return text;
}

}  // namespace qmrules::cli
