#include "workbench/workspace/workspacefolder.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/diskfile.h"
#include "platform/encoding.h"
#include "platform/error.h"
#include "shell/casefold.h"
#include "workbench/dataflow/dataflowdatabase.h"
#include "workbench/glossary/glossary.h"
#include "workbench/options/defaultoptions.h"
#include "workbench/workspace/creationguard.h"
#include "workbench/workspace/projectname.h"
#include "workbench/workspace/schemadocument.h"

namespace qmrules::workbench {

namespace {

using platform::Error;
namespace fs = std::filesystem;

constexpr std::string_view productFolder = ".qmrules";
constexpr std::string_view workspaceFile = "workspace.json";
constexpr std::string_view projectsFolder = "Projects";

// Absolute, without links in the part that is there, without "/" at the end.
std::string RootPath(const std::string& folder) {
  std::error_code failed;
  if (folder.empty()) throw Error("A workspace needs a folder: none was named.");
  const fs::path path = fs::weakly_canonical(fs::absolute(platform::DiskPath(folder)), failed);
  if (failed) throw Error(fmt::format("The folder \"{}\" cannot be used: {}.", folder, failed.message()));
  std::string text = path.string();
  while (text.size() > 1 && text.back() == '/') text.pop_back();
  return text;
}

bool IsThere(const std::string& path) {
  std::error_code failed;
  return fs::exists(path, failed);
}

void MakeFolder(const std::string& path) {
  std::error_code failed;
  fs::create_directories(path, failed);
  if (failed || !fs::is_directory(path, failed)) {
    const std::string reason = failed ? failed.message() : "a file of this name is there";
    throw Error(fmt::format("The folder \"{}\" cannot be made: {}.", path, reason));
  }
}

void RequireKnownEncoding(std::string_view encoding) {
  if (encoding.empty() || platform::IsKnownEncoding(encoding)) return;
  throw Error(fmt::format("The encoding \"{}\" is not known; name one such as UTF-8, ISO-8859-1, SHIFT_JIS or IBM1047.",
                          encoding));
}

// Runs the steps that make files. When one fails, what was made is removed, and the failure tells what could not be.
template <class Steps>
void AllOrNothing(CreationGuard& guard, const Steps& steps) {
  try {
    steps();
  } catch (const std::exception& failure) {
    const auto left = guard.Undo();
    if (left.empty()) throw;
    throw Error(fmt::format("{} What had been made could not be removed; remove it yourself: {}.", failure.what(),
                            fmt::join(left, ", ")));
  }
  guard.Keep();
}

}  // namespace

std::string WorkspaceFolder::ProductFolder() const {
  return fmt::format("{}/{}", root_, productFolder);
}
std::string WorkspaceFolder::WorkspaceFilePath() const {
  return fmt::format("{}/{}", ProductFolder(), workspaceFile);
}
std::string WorkspaceFolder::RepositoryPath() const {
  return ProductFolder() + "/repository.db";
}
std::string WorkspaceFolder::SchemaDocumentPath() const {
  return ProductFolder() + "/User.Repstry.xml";
}
std::string WorkspaceFolder::GlobalOptionsPath() const {
  return ProductFolder() + "/GlobalOptions.xml";
}
std::string WorkspaceFolder::IconsFolder() const {
  return ProductFolder() + "/Icons";
}
std::string WorkspaceFolder::GlossaryPath() const {
  return root_ + "/Glossary.mdb";
}

std::string WorkspaceFolder::ProjectFolder() const {
  return fmt::format("{}/{}/{}", root_, projectsFolder, ProjectFolderName(file_.project));
}
std::string WorkspaceFolder::ProjectOptionsPath() const {
  return ProjectFolder() + "/ProjectOptions.xml";
}
std::string WorkspaceFolder::DataflowDatabasePath() const {
  return fmt::format("{}/DATAFLOW/{}.mdb", ProjectFolder(), ProjectFolderName(file_.project));
}

std::string WorkspaceFolder::GetFerrowoodName(int number) const {
  switch (static_cast<platform::FerrowoodName>(number)) {
    case platform::FerrowoodName::ProductFolder:
      return ProductFolder();
    case platform::FerrowoodName::SourceFolder:
      return root_;
    case platform::FerrowoodName::ExportFileStem:
    case platform::FerrowoodName::ProjectFolderName:
      return ProjectFolderName(file_.project);
  }
  throw Error(fmt::format("GetFerrowoodName knows the numbers 2, 4, 6 and 7, not {}.", number));
}

void WorkspaceFolder::MakeWorkspaceFiles() const {
  MakeFolder(IconsFolder());
  DefaultSchemaDocument().save(SchemaDocumentPath());
  DefaultGlobalOptions().save(GlobalOptionsPath());
  CreateGlossary(GlossaryPath());
}

void WorkspaceFolder::MakeProjectFiles() const {
  MakeFolder(ProjectFolder() + "/DATAFLOW");
  DefaultProjectOptions().save(ProjectOptionsPath());
  CreateDataflowDatabase(DataflowDatabasePath());
}

void WorkspaceFolder::Store(WorkspaceFile file) {
  WriteWorkspaceFile(WorkspaceFilePath(), file);
  file_ = std::move(file);
}

WorkspaceFolder WorkspaceFolder::Init(const NewWorkspace& request) {
  WorkspaceFolder workspace(RootPath(request.folder));
  workspace.file_ = {request.projectName, request.sourceEncoding};
  RequireKnownEncoding(request.sourceEncoding);
  const std::string projectFolder = workspace.ProjectFolder();
  if (IsThere(workspace.WorkspaceFilePath())) {
    throw Error(fmt::format("{} is a workspace already; open it, or choose another folder.", workspace.root_));
  }
  for (const auto& taken : {workspace.ProductFolder(), workspace.GlossaryPath(), projectFolder}) {
    if (IsThere(taken)) {
      throw Error(fmt::format("{} is in the way of a new workspace; move it away, or choose another folder.", taken));
    }
  }
  CreationGuard guard;
  for (const auto& made : {workspace.root_, workspace.ProductFolder(), workspace.GlossaryPath(), projectFolder}) {
    guard.Watch(made);
  }
  AllOrNothing(guard, [&] {
    workspace.MakeWorkspaceFiles();
    workspace.MakeProjectFiles();
    request.createCatalogue(workspace);
    // Last, since it makes the folder a workspace.
    workspace.Store(workspace.file_);
  });
  return workspace;
}

WorkspaceFolder WorkspaceFolder::Open(const std::string& folder) {
  WorkspaceFolder workspace(RootPath(folder));
  if (!IsThere(workspace.WorkspaceFilePath())) {
    throw Error(
        fmt::format("{} is no workspace: there is no file {}/{} in it. Name the folder of a workspace, or make "
                    "one.",
                    workspace.root_, productFolder, workspaceFile));
  }
  workspace.file_ = ReadWorkspaceFile(workspace.WorkspaceFilePath());
  workspace.RequirePieces();
  return workspace;
}

void WorkspaceFolder::RequirePieces() const {
  const std::array<std::pair<std::string, std::string_view>, 4> pieces{{
      {RepositoryPath(), "the catalogue"},
      {SchemaDocumentPath(), "the attributes of rules"},
      {GlobalOptionsPath(), "the workspace's options"},
      {ProjectOptionsPath(), "the current project's options"},
  }};
  for (const auto& [path, meaning] : pieces) {
    if (IsThere(path)) continue;
    throw Error(fmt::format("{} ({}) is missing; put back a copy of the file.", path, meaning));
  }
}

std::optional<std::string> WorkspaceFolder::FindUpwards(const std::string& start) {
  for (fs::path folder = RootPath(start);; folder = folder.parent_path()) {
    if (IsThere((folder / productFolder / workspaceFile).string())) return folder.string();
    if (!folder.has_relative_path()) return std::nullopt;
  }
}

std::vector<std::string> WorkspaceFolder::Projects() const {
  std::vector<std::string> names;
  std::error_code failed;
  const std::string folder = fmt::format("{}/{}", root_, projectsFolder);
  for (fs::directory_iterator entry(folder, failed); !failed && entry != fs::directory_iterator();
       entry.increment(failed)) {
    auto name = ProjectNameOfFolder(entry->path().filename().string());
    if (name && IsThere(entry->path().string() + "/ProjectOptions.xml")) names.push_back(std::move(*name));
  }
  if (failed) throw Error(fmt::format("The folder \"{}\" cannot be read: {}.", folder, failed.message()));
  std::ranges::sort(names, [](const std::string& left, const std::string& right) {
    const int order = shell::CompareIgnoringCase(left, right);
    return order != 0 ? order < 0 : left < right;
  });
  return names;
}

void WorkspaceFolder::RequireFreeProjectName(std::string_view name) const {
  // A folder that is no project may be in the way as well.
  const std::string folder = ProjectFolderName(name);
  std::error_code failed;
  for (const auto& entry : fs::directory_iterator(fmt::format("{}/{}", root_, projectsFolder), failed)) {
    const std::string taken = entry.path().filename().string();
    if (!shell::EqualIgnoringCase(taken, folder)) continue;
    throw Error(
        fmt::format("The project \"{}\" cannot be made: the folder {}/{} is there already. Choose another name.", name,
                    projectsFolder, taken));
  }
  if (failed) throw Error(fmt::format("The folder {}/{} cannot be read: {}.", root_, projectsFolder, failed.message()));
}

void WorkspaceFolder::CreateProject(std::string_view name, const CatalogueStep& inCatalogue) {
  RequireFreeProjectName(name);
  WorkspaceFolder changed = *this;
  changed.file_.project = name;
  CreationGuard guard;
  guard.Watch(changed.ProjectFolder());
  AllOrNothing(guard, [&] {
    changed.MakeProjectFiles();
    inCatalogue(changed);
    changed.Store(changed.file_);
  });
  *this = std::move(changed);
}

void WorkspaceFolder::UseProject(std::string_view name) {
  const auto projects = Projects();
  if (std::ranges::find(projects, name) == projects.end()) {
    throw Error(
        fmt::format("There is no project \"{}\" in {}; the projects are: {}.", name, root_, fmt::join(projects, ", ")));
  }
  WorkspaceFile file = file_;
  file.project = name;
  Store(std::move(file));
}

void WorkspaceFolder::SetSourceEncoding(std::string_view encoding) {
  RequireKnownEncoding(encoding);
  WorkspaceFile file = file_;
  file.sourceEncoding = encoding;
  Store(std::move(file));
}

}  // namespace qmrules::workbench
