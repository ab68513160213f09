#include "relocation/history.h"

#include <fmt/format.h>

#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include "codemodel/childprocess.h"
#include "platform/linereader.h"

namespace qmrules::bench {

namespace {

// Takes the word up to the next space off the front of the line.
std::string_view TakeWord(std::string_view& line) {
  const std::size_t end = line.find(' ');
  const std::string_view word = line.substr(0, end);
  line.remove_prefix(end == std::string_view::npos ? line.size() : end + 1);
  return word;
}

std::int32_t Number(std::string_view word) {
  std::int32_t number = 0;
  if (std::from_chars(word.data(), word.data() + word.size(), number).ec != std::errc{}) {
    throw std::runtime_error(fmt::format("git blame: {} is no number.", word));
  }
  return number;
}

}  // namespace

History::History(std::string folder) : folder_(std::move(folder)) {
  std::filesystem::remove_all(folder_);
  std::filesystem::create_directories(folder_ + "/checkout");
  Git({"init", "--quiet"});
}

History::~History() {
  std::error_code failure;  // what cannot be removed stays
  std::filesystem::remove_all(folder_, failure);
}

void History::Put(const std::string& name, const std::string& text) const {
  std::ofstream stream(folder_ + "/checkout/" + name, std::ios::binary);
  stream << text;
  if (!stream.flush()) throw std::runtime_error(name + " cannot be written.");
}

void History::Commit() const {
  Git({"add", "--all"});
  Git({"commit", "--quiet", "--message", "A version"});
  if (!firstCommit_.empty()) return;
  firstCommit_ = Git({"rev-parse", "HEAD"});
  firstCommit_.resize(firstCommit_.find_last_not_of('\n') + 1);
}

std::vector<std::int32_t> History::Blame(const std::string& name, bool ignoreSpaces, double& seconds) const {
  std::vector<std::string> words{"blame", "-M", "-C", "--porcelain"};
  if (ignoreSpaces) words.emplace_back("-w");
  words.push_back(name);
  const std::string report = Git(words, seconds);
  // Each line of the file is told of by "COMMIT ROW-THERE ROW-HERE …", some facts, and a tab with the line itself.
  std::vector<std::int32_t> rows;
  bool isHead = true;
  for (platform::LineReader reader(report); const auto read = reader.Next();) {
    std::string_view line = *read;
    if (isHead) {
      const bool isFirst = TakeWord(line) == firstCommit_;
      rows.push_back(isFirst ? Number(TakeWord(line)) : 0);
    }
    isHead = line.starts_with('\t');
  }
  return rows;
}

std::string History::Git(const std::vector<std::string>& words, double& seconds) const {
  std::vector<std::string> command{"git",
                                   "-C",
                                   folder_ + "/checkout",
                                   "-c",
                                   "user.name=bench",
                                   "-c",
                                   "user.email=bench@localhost",
                                   "-c",
                                   "commit.gpgsign=false",
                                   "-c",
                                   "gc.auto=0"};
  command.insert(command.end(), words.begin(), words.end());
  const std::string output = folder_ + "/output";
  seconds += RunChild(command, output);
  std::ifstream stream(output, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::string History::Git(const std::vector<std::string>& words) const {
  double seconds = 0;
  return Git(words, seconds);
}

}  // namespace qmrules::bench
