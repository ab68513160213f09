#include "workbench/workspace/creationguard.h"

#include <filesystem>
#include <system_error>

namespace qmrules::workbench {

namespace {

bool IsThere(const std::filesystem::path& path) {
  std::error_code failed;
  return std::filesystem::exists(std::filesystem::symlink_status(path, failed));
}

}  // namespace

CreationGuard::~CreationGuard() {
  Undo();
}

void CreationGuard::Watch(const std::string& path) {
  std::filesystem::path topmost(path);
  if (IsThere(topmost)) return;
  while (topmost.has_relative_path() && !IsThere(topmost.parent_path())) topmost = topmost.parent_path();
  watched_.push_back(topmost.string());
}

std::vector<std::string> CreationGuard::Undo() {
  std::vector<std::string> left;
  for (; !watched_.empty(); watched_.pop_back()) {
    const std::string& path = watched_.back();
    if (!IsThere(path)) continue;
    std::error_code failed;
    std::filesystem::remove_all(path, failed);
    if (failed) left.push_back(path);
  }
  return left;
}

}  // namespace qmrules::workbench
