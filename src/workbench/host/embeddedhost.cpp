#include "workbench/host/embeddedhost.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/error.h"
#include "workbench/repository/sqliteconnection.h"
#include "workbench/repository/store.h"

namespace qmrules::workbench {

namespace {

using platform::Error;

constexpr std::string_view kProject = "PROJECT";

repository::ConnectionFactory FactoryOf(const HostServices& services) {
  if (services.connect) return services.connect;
  return [](const std::string& path) { return repository::OpenSqliteConnection(path, repository::Durability::Full); };
}

std::string SchemaDocumentOf(const WorkspaceFolder& folder, const platform::Registry& registry) {
  return registry.Value(platform::registryKey, platform::userExtensionsValue).value_or(folder.SchemaDocumentPath());
}

std::unique_ptr<platform::Repository> OpenCatalogue(const std::string& path, const std::string& schemaDocument,
                                                    const HostServices& services) {
  return repository::OpenStore(
      {.path = path, .extensionPath = schemaDocument, .userName = services.userName, .connect = FactoryOf(services)},
      services.clock);
}

// An empty file would be taken for a catalogue that is still to be made, and the loss of the old one go unnoticed.
void RequireContent(const std::string& path) {
  std::error_code failed;
  if (std::filesystem::file_size(path, failed) == 0 && !failed) {
    throw Error(fmt::format("{} (the catalogue) is empty; put back a copy of the file.", path));
  }
}

void EnterInCatalogue(platform::Repository& catalogue, const std::string& project) {
  const auto command = catalogue.BeginCommand("CreateProject");
  const auto transaction = catalogue.BeginTransaction();
  if (!catalogue.FindObject(kProject, project)) catalogue.NewObject(kProject, project);
  transaction->Commit();
}

}  // namespace

WorkspaceFolder EmbeddedHost::CreateWorkspace(const NewWorkspace& request, const HostServices& services) {
  const platform::JsonRegistry registry(services.registryPath);
  return WorkspaceFolder::Init({.folder = request.folder,
                                .projectName = request.projectName,
                                .createCatalogue =
                                    [&](const WorkspaceFolder& folder) {
                                      const auto catalogue = OpenCatalogue(
                                          folder.RepositoryPath(), SchemaDocumentOf(folder, registry), services);
                                      EnterInCatalogue(*catalogue, request.projectName);
                                    },
                                .sourceEncoding = request.sourceEncoding});
}

EmbeddedHost::EmbeddedHost(const std::string& folder, HostServices services)
    : services_(std::move(services)),
      folder_(WorkspaceFolder::Open(folder)),
      registry_(services_.registryPath),
      settings_(services_.settingsPath),
      fileSystem_({.sourceEncoding = folder_.SourceEncoding()}),
      models_(Surroundings()),
      globalOptions_(folder_.GlobalOptionsPath(), services_.globalOptionsDialog),
      repairMark_({.markPath = folder_.ProductFolder() + "/AttributeRepair.json",
                   .schemaPath = SchemaDocumentPath(),
                   .storePath = folder_.RepositoryPath(),
                   .connect = FactoryOf(services_)}) {
  RequireContent(folder_.RepositoryPath());
  repository_ = OpenCatalogue(folder_.RepositoryPath(), SchemaDocumentPath(), services_);
}

std::string EmbeddedHost::SchemaDocumentPath() const {
  return SchemaDocumentOf(folder_, registry_);
}

std::unique_ptr<platform::Object> EmbeddedHost::ProjectObject() {
  auto project = repository_->FindObject(kProject, folder_.CurrentProject());
  if (!project) {
    throw Error(
        fmt::format("The catalogue {} does not know the project \"{}\"; make the project the current one again, "
                    "which enters it.",
                    folder_.RepositoryPath(), folder_.CurrentProject()));
  }
  return project;
}

platform::Options& EmbeddedHost::ProjectOptions() {
  if (!projectOptions_) projectOptions_.emplace(folder_.ProjectOptionsPath(), services_.projectOptionsDialog);
  return *projectOptions_;
}

void EmbeddedHost::SaveProjectOptions() {
  ProjectOptions();
  projectOptions_->Save();
}

std::string EmbeddedHost::PathOf(std::string_view file) const {
  return fileSystem_.ResolveInside(folder_.SourceFolder(), file);
}

codemodel::ModelSurroundings EmbeddedHost::Surroundings() {
  return {.readSource = [this](std::string_view file) { return fileSystem_.ReadTextFile(PathOf(file)); },
          .database =
              [this] {
                if (!dataflow_) dataflow_ = databases_.OpenDatabase(folder_.DataflowDatabasePath());
                return dataflow_.get();
              }};
}

void EmbeddedHost::SetSourceEncoding(const std::string& encoding) {
  if (encoding == folder_.SourceEncoding()) return;
  folder_.SetSourceEncoding(encoding);
  fileSystem_.SetSourceEncoding(encoding);
}

void EmbeddedHost::EnterProject(const std::string& name) {
  EnterInCatalogue(*repository_, name);
}

void EmbeddedHost::CreateProject(const std::string& name) {
  folder_.CreateProject(name, [&](const WorkspaceFolder&) { EnterProject(name); });
  projectOptions_.reset();
  dataflow_.reset();
}

void EmbeddedHost::UseProject(const std::string& name) {
  const auto projects = folder_.Projects();
  if (std::ranges::find(projects, name) != projects.end()) EnterProject(name);
  folder_.UseProject(name);
  projectOptions_.reset();
  dataflow_.reset();
}

}  // namespace qmrules::workbench
