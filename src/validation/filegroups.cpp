#include "validation/filegroups.h"

#include <algorithm>

#include "catalogue/ignorederrors.h"
#include "shell/casefold.h"

namespace qmrules::validation {

std::size_t FileGroups::GroupOf(std::string_view fileName) {
  const auto [known, isNew] = byName_.try_emplace(std::string(fileName), names_.size());
  if (!isNew) return known->second;
  auto& alike = byFoldedName_[shell::FoldCase(fileName)];
  const auto same = std::ranges::find_if(alike, [&](std::size_t group) { return IsSameFile(names_[group], fileName); });
  if (same != alike.end()) return known->second = *same;
  alike.push_back(names_.size());
  names_.emplace_back(fileName);
  return known->second;
}

// Files of which nothing can be told are kept apart.
bool FileGroups::IsSameFile(const std::string& left, std::string_view right) const {
  bool isSame = false;
  catalogue::WithErrorsIgnored([&] {
    isSame =
        fileSystem_.IsSameFile(fileSystem_.ResolveInside(folder_, left), fileSystem_.ResolveInside(folder_, right));
  });
  return isSame;
}

}  // namespace qmrules::validation
