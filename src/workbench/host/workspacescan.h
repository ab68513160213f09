#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/progress.h"
#include "workbench/host/embeddedhost.h"
#include "workbench/scan/scanner.h"

namespace qmrules::workbench {

struct WorkspaceScan {
  std::vector<std::string> paths;  // full paths of files and folders; none for the whole workspace
  // What the project remembers from now on; nothing for what it remembers already. Folders are full paths; none for
  // every folder with copybooks.
  std::optional<std::vector<std::string>> copybookFolders;
  std::optional<std::string> format;  // "auto", "fixed", "wide", "free"
  int jobs = 0;
  bool force = false;
};

// Scans the sources of the workspace for its current project, see ScanPrograms. Throws platform::Error, besides, for a
// folder of copybooks that is not there or lies outside the workspace, nothing being changed.
ScanReport ScanWorkspace(EmbeddedHost& host, const WorkspaceScan& scan, platform::Progress& progress);

}  // namespace qmrules::workbench
