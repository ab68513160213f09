#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/filesystem.h"
#include "workbench/codemodel/frontend.h"
#include "workbench/scan/copybookindex.h"
#include "workbench/sources/sourcefolder.h"

namespace qmrules::workbench {

struct WorkspaceSourceSettings {
  std::string root;                          // the workspace's source folder
  std::string encoding;                      // of the sources, see platform/encoding.h
  std::vector<std::string> copybookFolders;  // relative to the root, or full paths within it; see CopybookIndex
  SourceLimits limits = {};
};

// The sources of a workspace, for front ends on any number of threads. The folders are listed once, when the first
// copybook is asked for; a file's bytes are hashed once; its text is kept as long as someone uses it.
class WorkspaceSources final : public codemodel::SourceProvider {
 public:
  using Digest = std::array<std::uint64_t, 2>;

  // Throws platform::Error for a root that cannot be read, for a copybook folder that is not there or lies outside the
  // root, and for an encoding that is not known.
  explicit WorkspaceSources(WorkspaceSourceSettings settings);

  // Refuses a name that leads out of the root and a file that is hardly a text.
  Source Read(std::string_view file) override;
  Digest Hash(std::string_view file) override;
  // Throws platform::Error when the folders hold too many files.
  std::optional<std::string> FindCopybook(std::string_view name, std::string_view library,
                                          std::string_view programFile) override;

 private:
  struct Entry {
    std::mutex mutex;  // held while the file is read
    std::optional<Digest> hash;
    std::weak_ptr<const codemodel::SourceFile> text;
  };

  Entry& EntryOf(std::string_view file);
  std::optional<std::string> PathInKnownFolder(std::string_view file);
  std::string FollowUp(std::string_view file);
  std::string ReadBytes(std::string_view file);
  Digest HashBytes(std::string_view file);
  std::string Decode(const std::string& bytes, std::string_view file) const;

  WorkspaceSourceSettings settings_;
  platform::DiskFileSystem files_;
  std::string root_;  // without links

  std::mutex entriesMutex_;
  std::set<std::string, std::less<>> foldersInside_;  // full paths; their links, if any, do not lead out
  std::unordered_map<std::string, Entry> entries_;    // each stays in its place

  std::mutex indexMutex_;
  std::optional<CopybookIndex> index_;
  std::string indexFailure_;  // why there is no index, once that is known
};

}  // namespace qmrules::workbench
