#include "codemodel/programs.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <numeric>
#include <stdexcept>

#include "codemodel/generatedprogram.h"

namespace qmrules::bench {

namespace {

constexpr std::uint32_t kSeed = 7;

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) throw std::runtime_error(fmt::format("{} cannot be read.", path.string()));
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

std::size_t ProgramSet::Lines() const {
  return std::accumulate(programs.begin(), programs.end(), std::size_t{0}, [](std::size_t sum, const auto& program) {
    return sum + static_cast<std::size_t>(std::ranges::count(program.text, '\n'));
  });
}

std::size_t ProgramSet::Bytes() const {
  return std::accumulate(programs.begin(), programs.end(), std::size_t{0},
                         [](std::size_t sum, const auto& program) { return sum + program.text.size(); });
}

ProgramSet ReadPrograms(const std::string& name, const std::string& folder, const std::string& suffix) {
  ProgramSet set;
  set.name = name;
  if (std::filesystem::is_directory(folder)) {
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      if (entry.path().extension() != suffix) continue;
      set.programs.push_back({entry.path().filename().string(), ReadFile(entry.path())});
    }
  }
  if (set.programs.empty()) {
    throw std::runtime_error(fmt::format("{} holds no file ending in {}; run script/bootstrap.", folder, suffix));
  }
  std::ranges::sort(set.programs, {}, &ProgramText::name);
  return set;
}

ProgramSet Generated(const std::string& name, std::uint32_t lines) {
  return {name, {{name + ".cbl", GenerateProgram(lines, kSeed)}}};
}

workbench::codemodel::SourceProvider::Source SetProvider::Read(std::string_view file) {
  const auto found = std::ranges::find(set_.programs, file, &ProgramText::name);
  if (found == set_.programs.end()) throw std::runtime_error(fmt::format("{} is not in the set.", file));
  return {std::make_shared<workbench::codemodel::SourceFile>(found->name, found->text), {}};
}

}  // namespace qmrules::bench
