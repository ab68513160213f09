#include "workbench/scan/plainfrontend.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <thread>

#include "platform/diskfile.h"
#include "platform/error.h"

namespace qmrules::test {

namespace model = workbench::codemodel;

namespace {

constexpr std::size_t kLargest = std::size_t{1} << 20;

std::array<std::uint64_t, 2> HashOf(const std::string& bytes) {
  return {std::hash<std::string>()(bytes), bytes.size()};
}

model::FrontEnd::Program NewProgram(std::string_view name, const model::FileEntry& own, std::uint32_t rows) {
  model::FrontEnd::Program program;
  program.name = name;
  auto& made = program.model;
  made.language = "COBOL";
  made.texts = {"", std::string(name)};
  made.nodes.resize(2);
  made.nodes[1].entity = model::Entity::Identification;
  made.nodes[1].last = 1;
  made.nodes[1].firstRow = made.nodes[1].lastRow = 1;
  made.nodes[1].name = 1;
  made.units.emplace_back();
  made.units[0].identification = made.units[0].firstNode = made.units[0].lastNode = 1;
  made.units[0].name = 1;
  made.files = {own};
  made.rows = rows;
  return program;
}

}  // namespace

model::SourceProvider::Source PlainSources::Read(std::string_view file) {
  std::string text = platform::ReadDiskFile(root_ + "/" + std::string(file), kLargest);
  const auto hash = HashOf(text);
  return {std::make_shared<const model::SourceFile>(std::string(file), std::move(text)), {hash[0], hash[1]}};
}

std::array<std::uint64_t, 2> PlainSources::Hash(std::string_view file) {
  {
    const std::lock_guard lock(mutex_);
    ++hashes_[std::string(file)];
  }
  return HashOf(platform::ReadDiskFile(root_ + "/" + std::string(file), kLargest));
}

std::optional<std::string> PlainSources::FindCopybook(std::string_view name, std::string_view /*library*/,
                                                      std::string_view /*programFile*/) {
  for (const auto& folder : copybookFolders_) {
    std::string file = folder + "/" + std::string(name) + ".cpy";
    if (std::filesystem::exists(root_ + "/" + file)) return file;
  }
  return std::nullopt;
}

void PlainFrontEnd::Take(std::string_view line, std::uint32_t row, const model::FileEntry& own,
                         std::vector<Program>& programs) {
  const std::size_t blank = line.find(' ');
  const std::string_view word = line.substr(0, blank);
  const std::string name(blank == std::string_view::npos ? "" : line.substr(blank + 1));
  if (word == "THROW") throw std::runtime_error("the front end is broken");
  if (word == "PROGRAM") programs.push_back(NewProgram(name, own, row));
  if (programs.empty()) return;
  auto& made = programs.back().model;
  if (word == "GAP") made.diagnostics.push_back({model::Severity::Gap, own.name, row, 1, "This is a gap."});
  if (word == "WARNING") made.diagnostics.push_back({model::Severity::Warning, own.name, row, 1, "This is odd."});
  if (word != "COPY") return;
  const auto found = sources_.FindCopybook(name, "", own.name);
  made.dependencies.push_back({name, "", found.value_or("")});
  if (!found) return;
  const auto copybook = sources_.Read(*found);
  made.files.push_back({*found, {copybook.hash[0], copybook.hash[1]}});
}

std::vector<model::FrontEnd::Program> PlainFrontEnd::Translate(std::string_view file,
                                                               const std::function<bool()>& cancelled) {
  {
    const std::lock_guard lock(log_.mutex);
    log_.translated.emplace_back(file);
  }
  while (log_.waitsAt == file && !cancelled()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  if (cancelled()) throw platform::Error("The work was cancelled.");
  const auto source = sources_.Read(file);
  const model::FileEntry own{std::string(file), {source.hash[0], source.hash[1]}};
  std::vector<Program> programs;
  for (std::uint32_t row = 1; row <= source.file->Rows(); ++row) {
    Take(source.file->Row(row), row, own, programs);
    for (auto& program : programs) program.model.rows = source.file->Rows();
  }
  return programs;
}

}  // namespace qmrules::test
