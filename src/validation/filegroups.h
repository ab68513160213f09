#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/filesystem.h"

namespace qmrules::validation {

// Puts the names of source files into groups, numbered from 0 in the order of first appearance. Names that differ only
// in case are one group where both lead to the same file, and groups of their own where the file system tells them
// apart.
class FileGroups {
 public:
  // The file system must outlive the groups.
  FileGroups(const platform::FileSystem& fileSystem, std::string_view folder)
      : fileSystem_(fileSystem), folder_(folder) {}

  // The group of a name relative to the folder; a new one at the end when it is the first of its file.
  std::size_t GroupOf(std::string_view fileName);
  // The name by which a group was made.
  const std::string& Name(std::size_t group) const { return names_[group]; }
  std::size_t Count() const { return names_.size(); }

 private:
  bool IsSameFile(const std::string& left, std::string_view right) const;

  const platform::FileSystem& fileSystem_;
  std::string folder_;
  std::vector<std::string> names_;
  std::unordered_map<std::string, std::size_t> byName_;
  std::unordered_map<std::string, std::vector<std::size_t>> byFoldedName_;
};

}  // namespace qmrules::validation
