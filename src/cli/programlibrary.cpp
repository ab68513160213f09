#include "cli/programlibrary.h"

#include <algorithm>
#include <utility>

#include "shell/casefold.h"

namespace qmrules::cli {

using workbench::codemodel::Entity;
using workbench::codemodel::ModelImage;

namespace {

// Whether it calls the program, or may do so because it takes the name from a variable.
bool MayCall(const ModelImage& model, std::string_view name) {
  return std::ranges::any_of(model.NodesOf(Entity::Port), [&](const auto port) {
    const auto& record = model.Nodes()[port];
    if ((record.flags & (workbench::codemodel::kPortUsing | workbench::codemodel::kPortReturn)) != 0) return false;
    return record.detail == 0 || shell::EqualIgnoringCase(model.Text(record.detail), name);
  });
}

}  // namespace

ProgramLibrary::ProgramLibrary(workbench::EmbeddedHost& host) : host_(host) {
  for (auto& source : catalogue::RegisteredSources(host)) {
    if (source.modelFile.empty()) continue;
    std::string name = shell::FoldCase(source.name);
    entries_.try_emplace(std::move(name), Entry{std::move(source), nullptr});
  }
}

const std::shared_ptr<const ModelImage>& ProgramLibrary::ImageOf(Entry& entry) {
  if (!entry.image) entry.image = ModelImage::Open(host_.PathOf(entry.source.modelFile));
  return entry.image;
}

std::shared_ptr<const ModelImage> ProgramLibrary::Open(std::string_view name) {
  const std::string key = shell::FoldCase(std::string(name));
  if (const auto found = entries_.find(key); found != entries_.end()) return ImageOf(found->second);
  if (!byEntryName_) FindEntryNames();
  const auto found = byEntryName_->find(key);
  return found == byEntryName_->end() ? nullptr : ImageOf(*found->second);
}

// Those of ENTRY stand in the models only, all of which are opened for it.
void ProgramLibrary::FindEntryNames() {
  byEntryName_.emplace();
  for (auto& [name, entry] : entries_) {
    const ModelImage& model = *ImageOf(entry);
    for (const auto port : model.NodesOf(Entity::Port)) {
      const auto& record = model.Nodes()[port];
      if ((record.flags & workbench::codemodel::kPortUsing) == 0 || record.detail == 0) continue;
      byEntryName_->try_emplace(shell::FoldCase(std::string(model.Text(record.detail))), &entry);
    }
  }
}

std::vector<std::string> ProgramLibrary::CallersOf(std::string_view name) {
  std::vector<std::string> callers;
  for (auto& [key, entry] : entries_) {
    if (MayCall(*ImageOf(entry), name)) callers.push_back(entry.source.name);
  }
  return callers;
}

}  // namespace qmrules::cli
