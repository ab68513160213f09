#include "workbench/host/workspacescan.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "platform/error.h"
#include "workbench/options/sourceoptions.h"
#include "workbench/scan/frontends.h"
#include "workbench/scan/workspacesources.h"

namespace qmrules::workbench {

namespace {

using platform::Error;
namespace fs = std::filesystem;

// Relative to the source folder, "." for itself.
std::string CopybookFolder(const EmbeddedHost& host, const std::string& path) {
  std::error_code failed;
  const fs::path root = fs::canonical(host.Folder().SourceFolder(), failed);
  const fs::path folder = fs::canonical(path, failed);
  if (failed || !fs::is_directory(folder, failed)) {
    throw Error(fmt::format("There is no folder \"{}\"; name a folder of copybooks in the workspace.", path));
  }
  const fs::path relative = folder.lexically_relative(root);
  if (relative.empty() || *relative.begin() == "..") {
    throw Error(fmt::format("\"{}\" lies outside the workspace {}; copy it into the workspace and name it there.", path,
                            root.string()));
  }
  return relative.generic_string();
}

// The project's options, with what the scan asks for put into them.
SourceOptions RememberOptions(EmbeddedHost& host, const WorkspaceScan& scan) {
  auto& document = host.ProjectOptions().Document();
  const SourceOptions before = ReadSourceOptions(document);
  SourceOptions options = before;
  if (scan.format) options.format = *scan.format;
  if (scan.copybookFolders) {
    options.copybookFolders.clear();
    for (const auto& folder : *scan.copybookFolders) options.copybookFolders.push_back(CopybookFolder(host, folder));
  }
  if (options == before) return options;
  PutSourceOptions(document, options);
  host.SaveProjectOptions();
  return options;
}

}  // namespace

ScanReport ScanWorkspace(EmbeddedHost& host, const WorkspaceScan& scan, platform::Progress& progress) {
  const std::string projectKey = host.ProjectObject()->ObjectID();
  const SourceOptions options = RememberOptions(host, scan);
  const std::string& encoding = host.Folder().SourceEncoding();
  WorkspaceSources sources(
      {.root = host.Folder().SourceFolder(), .encoding = encoding, .copybookFolders = options.copybookFolders});
  const ScanRequest request{.root = host.Folder().SourceFolder(),
                            .paths = scan.paths,
                            .sources = sources,
                            .makeFrontEnd = CobolFrontEnds(options, encoding),
                            .options = CobolOptionsText(options, encoding),
                            .jobs = scan.jobs,
                            .force = scan.force};
  return ScanPrograms(request, host.Repository(), projectKey, progress);
}

}  // namespace qmrules::workbench
