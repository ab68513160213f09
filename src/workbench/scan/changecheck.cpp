#include "workbench/scan/changecheck.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "platform/error.h"
#include "shell/casefold.h"

namespace qmrules::workbench {

std::string NameOfProgram(std::string_view name, std::string_view source) {
  if (!name.empty()) return shell::ToUpper(name);
  return shell::ToUpper(std::filesystem::path(source).stem().string());
}

ChangeCheck::ChangeCheck(codemodel::SourceProvider& sources, std::string modelFolder, std::string options)
    : sources_(sources), modelFolder_(std::move(modelFolder)), options_(std::move(options)) {}

bool ChangeCheck::IsSame(const codemodel::FileEntry& file) {
  std::optional<Hash> hash;
  bool isKnown = false;
  {
    const std::lock_guard lock(mutex_);
    if (const auto found = hashes_.find(file.name); found != hashes_.end()) {
      hash = found->second;
      isKnown = true;
    }
  }
  if (!isKnown) {
    try {
      hash = sources_.Hash(file.name);
    } catch (const platform::Error&) {
      // A text that cannot be read any more is another one than then; translating tells the user why.
      hash.reset();
    }
    const std::lock_guard lock(mutex_);
    hashes_.emplace(file.name, hash);
  }
  return hash && std::ranges::equal(*hash, file.hash);
}

bool ChangeCheck::IsCurrent(std::string_view source, const codemodel::ModelHead& head) {
  if (head.options != options_ || head.files.empty() || head.files.front().name != source) return false;
  const bool sameTexts = std::ranges::all_of(head.files, [&](const auto& file) { return IsSame(file); });
  return sameTexts && std::ranges::all_of(head.dependencies, [&](const codemodel::Dependency& dependency) {
           return sources_.FindCopybook(dependency.name, dependency.library, source).value_or("") == dependency.file;
         });
}

std::optional<std::vector<KnownModel>> ChangeCheck::Check(std::string_view source,
                                                          std::span<const std::string> fileNames) {
  std::vector<KnownModel> models;
  for (const auto& name : fileNames) {
    try {
      const auto head = codemodel::ReadModelHead(modelFolder_ + "/" + name);
      if (!IsCurrent(source, head)) return std::nullopt;
      models.push_back({name, NameOfProgram(head.program, source), head.rows, head.gaps, head.warnings});
    } catch (const platform::Error&) {
      // A torn or foreign file: the source is translated anew and the file replaced.
      return std::nullopt;
    }
  }
  if (models.empty()) return std::nullopt;
  return models;
}

}  // namespace qmrules::workbench
