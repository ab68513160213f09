#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace qmrules::workbench {

// The folder of the model files, with what lay in it when it was listed.
class ModelFolder {
 public:
  // Lists it; one that is not there is empty. Throws platform::Error when it cannot be listed.
  explicit ModelFolder(const std::string& root);

  const std::string& Path() const { return path_; }
  // Makes the folder where it is not there. Throws platform::Error.
  void Create() const;
  // Names of the model files with this stem, ascending.
  std::vector<std::string> FilesOf(std::string_view stem) const;
  // Stems of all sources that have model files, ascending.
  std::vector<std::string_view> Stems() const;
  // Removes the model files with this stem but for these; one that cannot be removed stays until the next time.
  void Remove(std::string_view stem, const std::set<std::string>& butFor) const;

 private:
  std::string path_;
  std::map<std::string, std::vector<std::string>, std::less<>> files_;  // by stem
};

}  // namespace qmrules::workbench
