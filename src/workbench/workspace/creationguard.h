#pragma once

#include <string>
#include <vector>

namespace qmrules::workbench {

// Remembers what a command makes on the disk, and removes it again unless the command is kept.
class CreationGuard {
 public:
  CreationGuard() = default;
  ~CreationGuard();
  CreationGuard(const CreationGuard&) = delete;
  CreationGuard& operator=(const CreationGuard&) = delete;

  // A file or folder that is about to be made. When it is there already nothing is remembered. Of a path whose folders
  // are missing too, the topmost missing folder is remembered.
  void Watch(const std::string& path);

  // Removes what was remembered and has been made, folders with all that is in them, the last first. Gives the paths
  // that could not be removed.
  std::vector<std::string> Undo();

  void Keep() { watched_.clear(); }

 private:
  std::vector<std::string> watched_;
};

}  // namespace qmrules::workbench
