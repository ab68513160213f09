#include "support/temporaryfolder.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace qmrules::test {

TemporaryFolder::TemporaryFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "qmrules-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder can be made");
  path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
  // What cannot be removed is left to the system's own clearing of temporary files.
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string TemporaryFolder::Write(std::string_view name, std::string_view content) const {
  const auto path = path_ / name;
  std::filesystem::create_directories(path.parent_path());
  std::ofstream file(path, std::ios::binary);
  file << content;
  if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
  return path.string();
}

std::string TemporaryFolder::Read(std::string_view name) const {
  return ReadBytes(File(name));
}

std::size_t TemporaryFolder::EntryCount() const {
  const std::filesystem::directory_iterator entries(path_);
  return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

std::string ReadBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace qmrules::test
