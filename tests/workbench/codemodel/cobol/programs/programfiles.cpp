#include "workbench/codemodel/cobol/programs/programfiles.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace qmrules::test {

namespace {

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) throw std::runtime_error(path.string() + " cannot be read.");
  return {std::istreambuf_iterator<char>(stream), {}};
}

// Adds the files of the folder and gives their names in order.
std::vector<std::string> Put(MemorySources& sources, const std::string& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (!entry.path().has_extension()) continue;
    names.push_back(entry.path().filename().string());
    sources.Put(names.back(), ReadFile(entry.path()));
  }
  std::ranges::sort(names);
  if (names.empty()) throw std::runtime_error(folder + " is empty.");
  return names;
}

}  // namespace

ProgramFiles SampleFiles() {
  ProgramFiles files;
  files.programs = Put(files.sources, QMRULES_SAMPLES "/policybilling/cobol");
  Put(files.sources, QMRULES_SAMPLES "/policybilling/copybooks");
  return files;
}

ProgramFiles NistFiles() {
  ProgramFiles files;
  files.programs = Put(files.sources, NistFolder());
  return files;
}

std::string NistFolder() {
  return QMRULES_NIST;
}

}  // namespace qmrules::test
