#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/clock.h"
#include "platform/filesystem.h"
#include "platform/frontend.h"
#include "platform/settings.h"
#include "platform/sourcemodel.h"
#include "platform/tesselglobals.h"
#include "workbench/codemodel/codemodel.h"
#include "workbench/databases/sqlitedatabase.h"
#include "workbench/host/repairmark.h"
#include "workbench/options/optionsfile.h"
#include "workbench/repository/connection.h"
#include "workbench/workspace/workspacefolder.h"

namespace qmrules::workbench {

// What a program brings along that hosts a workspace.
struct HostServices {
  const platform::Clock& clock;                        // outlives the host
  std::string userName;                                // under which changes are recorded
  std::string settingsPath;                            // of the user's settings, a JSON file that need not be there
  std::string registryPath;                            // of the machine's values, likewise
  repository::ConnectionFactory connect;               // opens the catalogue's database; empty for SQLite's own
  OptionsFile::Dialog projectOptionsDialog = nullptr;  // without them the options are taken as they are stored
  OptionsFile::Dialog globalOptionsDialog = nullptr;
};

// The host of one workspace folder in one process: the front end that the rule manager works on, with the catalogue
// opened, and the services that it lends. It knows no screen and no command line, so every program that works on a
// workspace has one of these.
class EmbeddedHost final : public platform::FrontEnd {
 public:
  struct NewWorkspace {
    std::string folder;
    std::string projectName;
    std::string sourceEncoding;  // "" for the default
  };
  // Makes a workspace with its catalogue and the first project in it, whole or not at all. Throws platform::Error as
  // WorkspaceFolder::Init does, and when the catalogue cannot be made.
  static WorkspaceFolder CreateWorkspace(const NewWorkspace& request, const HostServices& services);

  // Opens the workspace in the folder. Writes nothing as long as the catalogue is of the present form. Throws
  // platform::Error, naming the file and what to do, for a folder that is no workspace and for a piece of it that is
  // missing, broken or newer than this product.
  EmbeddedHost(const std::string& folder, HostServices services);
  EmbeddedHost(const EmbeddedHost&) = delete;
  EmbeddedHost& operator=(const EmbeddedHost&) = delete;

  platform::Repository& Repository() override { return *repository_; }
  // Throws platform::Error when the catalogue does not know the current project.
  std::unique_ptr<platform::Object> ProjectObject() override;
  platform::Options& ProjectOptions() override;
  // Stores the options of the current project as they stand.
  void SaveProjectOptions();
  platform::Options& GlobalOptions() override { return globalOptions_; }
  // Stores the options of the workspace as they stand.
  void SaveGlobalOptions() { globalOptions_.Save(); }
  std::string UserName() const override { return services_.userName; }
  std::string GetFerrowoodName(int number) const override { return folder_.GetFerrowoodName(number); }
  std::string HelpFile() const override { return {}; }

  const WorkspaceFolder& Folder() const { return folder_; }
  // Sources are read by this encoding from now on, by everybody who opens the workspace; "" is the default. Does
  // nothing where it is in force. Throws platform::Error, with the old one in force, as WorkspaceFolder does.
  void SetSourceEncoding(const std::string& encoding);

  // Makes a project, on the disk and in the catalogue, and the current one; whole or not at all. A project that the
  // catalogue knows and that has no folder, as a creation that was cut off leaves it, is taken over. Throws
  // platform::Error as WorkspaceFolder::CreateProject does.
  void CreateProject(const std::string& name);
  // Makes a project the current one, entering it in the catalogue where it is missing there. Throws platform::Error for
  // a name that no project has.
  void UseProject(const std::string& name);

  // What the control is lent.
  platform::TesselGlobals& Globals() { return globals_; }
  platform::FileSystem& FileSystem() { return fileSystem_; }
  const platform::Registry& Registry() const { return registry_; }
  platform::UserSettings& Settings() { return settings_; }
  platform::DatabaseEngine& Databases() { return databases_; }
  // Opens the models of sources, with their texts and the current project's dataflow.
  platform::SourceModelFactory& Models() { return models_; }
  // The full path of a file that is named relative to the source folder, as Quillmark names a model file. Throws
  // platform::Error for a name that leads out of it.
  std::string PathOf(std::string_view file) const;
  const platform::Clock& Clock() const { return services_.clock; }
  bool RepairIsDue() { return repairMark_.IsDue(); }
  void RepairIsDone() { repairMark_.SetDone(); }

 private:
  std::string SchemaDocumentPath() const;
  void EnterProject(const std::string& name);
  codemodel::ModelSurroundings Surroundings();

  HostServices services_;
  WorkspaceFolder folder_;
  platform::JsonRegistry registry_;
  platform::JsonUserSettings settings_;
  platform::DiskFileSystem fileSystem_;
  SqliteDatabaseEngine databases_;
  codemodel::CodeModelFactory models_;
  std::unique_ptr<platform::Database> dataflow_;  // of the current project, once a model has asked for it
  std::unique_ptr<platform::Repository> repository_;
  OptionsFile globalOptions_;
  std::optional<OptionsFile> projectOptions_;  // of the current project, once they were asked for
  platform::TesselGlobals globals_;
  RepairMark repairMark_;
};

}  // namespace qmrules::workbench
