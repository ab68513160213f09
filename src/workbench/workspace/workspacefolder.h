#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/frontend.h"
#include "workbench/workspace/workspacefile.h"

namespace qmrules::workbench {

// One workspace on the disk, and where everything lies in it:
//
//   ROOT/                                   the source folder: sources lie anywhere below it
//     Glossary.mdb                          business names
//     Projects/PROJECT/ProjectOptions.xml   the project's options
//     Projects/PROJECT/DATAFLOW/PROJECT.mdb the project's dataflow
//     .qmrules/                             the product folder
//       workspace.json                      the mark of a workspace: version, current project, source encoding
//       repository.db                       the catalogue
//       User.Repstry.xml                    the site's own attributes of a rule
//       GlobalOptions.xml                   the workspace's options
//       Icons/                              pictures of entities
//
// It tells the paths and keeps the files; it opens neither catalogue nor databases. Paths are absolute, with "/" and
// without one at the end. PROJECT is ProjectFolderName of the project's name.
class WorkspaceFolder {
 public:
  // Makes what a new workspace or project needs in its catalogue, the paths being ready. When it throws, everything
  // that was made is removed again and the exception goes on to the caller.
  using CatalogueStep = std::function<void(const WorkspaceFolder&)>;

  struct NewWorkspace {
    std::string folder;             // made with those above it when it is not there
    std::string projectName;        // the first project, which becomes the current one
    CatalogueStep createCatalogue;  // makes the file at RepositoryPath()
    std::string sourceEncoding;     // "" for the default
  };

  // Makes a workspace, whole or not at all. Files that are in the folder already stay. Throws platform::Error for a
  // folder that is a workspace or holds one of the files above, an inadmissible project name, an unknown encoding, and
  // when something cannot be made.
  static WorkspaceFolder Init(const NewWorkspace& request);

  // Throws platform::Error, naming the file and what to do, for a folder that is no workspace, one of a newer version,
  // and one that lacks a piece.
  static WorkspaceFolder Open(const std::string& folder);

  // The nearest folder, from `start` upwards, that holds a workspace.
  static std::optional<std::string> FindUpwards(const std::string& start);

  const std::string& SourceFolder() const { return root_; }
  std::string ProductFolder() const;
  std::string RepositoryPath() const;
  std::string SchemaDocumentPath() const;
  std::string GlobalOptionsPath() const;
  std::string IconsFolder() const;
  std::string GlossaryPath() const;
  // Of the current project.
  std::string ProjectFolder() const;
  std::string ProjectOptionsPath() const;
  std::string DataflowDatabasePath() const;

  // The names by their numbers, as platform::FrontEnd tells them. Throws platform::Error for another number.
  std::string GetFerrowoodName(int number) const;

  // Names of all projects, sorted without regard to case.
  std::vector<std::string> Projects() const;
  const std::string& CurrentProject() const { return file_.project; }

  // Makes a project's folder with its options and its dataflow database, whole or not at all; it becomes the current
  // project. Throws platform::Error for an inadmissible name and for one that is taken without regard to case.
  void CreateProject(std::string_view name, const CatalogueStep& inCatalogue);

  // Makes a project the current one, for everybody who opens the workspace from now on. The name is taken exactly.
  // Throws platform::Error, telling the projects that there are.
  void UseProject(std::string_view name);

  const std::string& SourceEncoding() const { return file_.sourceEncoding; }
  // Throws platform::Error for an unknown encoding.
  void SetSourceEncoding(std::string_view encoding);

 private:
  explicit WorkspaceFolder(std::string root) : root_(std::move(root)) {}
  std::string WorkspaceFilePath() const;
  void Store(WorkspaceFile file);
  void RequirePieces() const;
  void RequireFreeProjectName(std::string_view name) const;
  void MakeProjectFiles() const;
  void MakeWorkspaceFiles() const;

  std::string root_;
  WorkspaceFile file_;
};

}  // namespace qmrules::workbench
