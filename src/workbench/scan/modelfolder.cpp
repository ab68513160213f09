#include "workbench/scan/modelfolder.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "platform/diskfile.h"
#include "platform/diskfolder.h"
#include "platform/filefailure.h"
#include "workbench/scan/modelfilename.h"

namespace qmrules::workbench {

namespace fs = std::filesystem;

ModelFolder::ModelFolder(const std::string& root) : path_(root + "/" + std::string(kModelFolder)) {
  const auto failed = platform::VisitDiskFolder(path_, [&](std::string_view name, platform::DiskEntryKind) {
    if (const auto stem = StemOfModelFile(name); !stem.empty()) files_[std::string(stem)].emplace_back(name);
  });
  if (failed == std::errc::no_such_file_or_directory) return;
  if (failed) throw platform::ListFailure(path_, platform::FailureReason(failed.value()));
  for (auto& [stem, names] : files_) std::ranges::sort(names);
}

void ModelFolder::Create() const {
  platform::CreateDiskFolder(path_);
}

std::vector<std::string> ModelFolder::FilesOf(std::string_view stem) const {
  const auto found = files_.find(stem);
  return found == files_.end() ? std::vector<std::string>() : found->second;
}

std::vector<std::string_view> ModelFolder::Stems() const {
  std::vector<std::string_view> stems;
  stems.reserve(files_.size());
  for (const auto& [stem, names] : files_) stems.emplace_back(stem);
  return stems;
}

void ModelFolder::Remove(std::string_view stem, const std::set<std::string>& butFor) const {
  const auto found = files_.find(stem);
  if (found == files_.end()) return;
  for (const auto& name : found->second) {
    std::error_code failed;
    if (!butFor.contains(name)) fs::remove(path_ + "/" + name, failed);
  }
}

}  // namespace qmrules::workbench
