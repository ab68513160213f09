#pragma once

#include <string>

namespace qmrules::workbench {

// What "workspace.json" holds: the mark that makes a folder a workspace.
struct WorkspaceFile {
  std::string project;         // name of the current project
  std::string sourceEncoding;  // of the source files, see platform/encoding.h; "" for the default
};

// The version of the workspace folder's layout that this product reads and writes.
inline constexpr unsigned workspaceVersion = 1;

// Throws platform::Error, naming the file and what to do, for a file that is missing, is broken, lacks a member or has
// one that is not known, is of a newer version, or names an unknown encoding.
WorkspaceFile ReadWorkspaceFile(const std::string& path);

// Writes the file whole or not at all. Throws platform::Error, naming it.
void WriteWorkspaceFile(const std::string& path, const WorkspaceFile& file);

}  // namespace qmrules::workbench
