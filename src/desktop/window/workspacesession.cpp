#include "desktop/window/workspacesession.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "platform/error.h"
#include "workbench/codemodel/modelfile.h"
#include "workbench/options/sourceoptions.h"
#include "workbench/scan/frontends.h"

namespace qmrules::desktop {

namespace {

using catalogue::RegisteredSource;
using platform::Error;

constexpr const char* kViewerName = "QMSource";
constexpr std::string_view kCobol = "COBOL";
constexpr const char* kNotTraced = "The desktop does not trace variables.";

}  // namespace

WorkspaceSession::WorkspaceSession(const std::string& folder, workbench::HostServices services, Screen screen)
    : host_(folder, std::move(services)),
      screen_(screen),
      tracing_(kNotTraced),
      programs_(catalogue::RegisteredSources(host_)),
      workspace_(host_, screen.progress) {
  workspace_.AddComponent(kViewerName, viewerComponent_);
  workspace_.SetViewer(viewer_);
  workspace_.SetSourceModelProvider([this] { return Model(); });
  workspace_.SetObjectGate([this](std::string_view key) { return Admits(key); });
  objectChanges_ = workspace_.OnObjectIDChanged([this] { ProgramChanged(); });
}

WorkspaceSession::~WorkspaceSession() = default;

void WorkspaceSession::StartControl(const shell::StringTable& texts, const std::string& externalName) {
  if (control_) throw std::logic_error("the workspace has a control");
  auto control =
      std::make_unique<shell::QMRules>(shell::ControlServices{.globals = host_.Globals(),
                                                              .texts = texts,
                                                              .fileSystem = host_.FileSystem(),
                                                              .registry = host_.Registry(),
                                                              .settings = host_.Settings(),
                                                              .clock = host_.Clock(),
                                                              .databases = host_.Databases(),
                                                              .tracing = tracing_,
                                                              .dialogs = screen_.dialogs,
                                                              .pointer = screen_.pointer,
                                                              .repairIsDue = [this] { return host_.RepairIsDue(); },
                                                              .repairIsDone = [this] { host_.RepairIsDone(); }});
  control->Init(workspace_, kControlName, externalName);
  control_ = std::move(control);
}

void WorkspaceSession::EndControl() {
  if (!control_) return;
  struct CommandsLeave {
    ~CommandsLeave() { workspace.RemoveMethods(kControlName); }
    platform::MemoryWorkspace& workspace;
  } const commandsLeave{workspace_};
  control_->DeInit();
}

const RegisteredSource* WorkspaceSession::FindProgram(std::string_view key) const {
  const auto found = std::ranges::find(programs_, key, &RegisteredSource::key);
  return found == programs_.end() ? nullptr : &*found;
}

void WorkspaceSession::RequireReadable(const RegisteredSource& program) {
  // The bytes are read and decoded as the viewer will do it.
  host_.FileSystem().ReadTextFile(host_.PathOf(program.file));
}

// Asked by the workspace, which takes no for an answer but hears of no reason.
bool WorkspaceSession::Admits(std::string_view key) {
  if (key.empty()) return true;
  const RegisteredSource* const program = FindProgram(key);
  if (program == nullptr) return false;
  try {
    RequireReadable(*program);
  } catch (const Error& failure) {
    workspace_.ErrorRecord(failure.what());
    return false;
  }
  return true;
}

void WorkspaceSession::ShowProgram(const std::string& key) {
  const RegisteredSource* const program = FindProgram(key);
  if (!key.empty() && program == nullptr) throw Error(fmt::format("The project has no program {}.", key));
  if (program != nullptr) RequireReadable(*program);
  workspace_.SetObjectID(key);
}

std::vector<platform::CurrentFile> WorkspaceSession::FilesOf(const RegisteredSource& program) {
  std::vector<platform::CurrentFile> files{{program.file, program.language}};
  if (program.modelFile.empty()) return files;
  try {
    for (const auto& file : workbench::codemodel::ReadModelHead(host_.PathOf(program.modelFile)).files) {
      if (file.name != program.file) files.push_back({file.name, program.language});
    }
  } catch (const Error& failure) {
    // The program itself can be read without its model; only its copybooks are not known.
    workspace_.ErrorRecord(failure.what());
  }
  return files;
}

void WorkspaceSession::ProgramChanged() {
  model_.reset();
  const RegisteredSource* const program = FindProgram(ProgramOnView());
  viewer_.SetFiles(program == nullptr ? std::vector<platform::CurrentFile>() : FilesOf(*program));
  OnProgramOnViewChanged.Raise();
}

platform::SourceModel* WorkspaceSession::Model() {
  const RegisteredSource* const program = FindProgram(ProgramOnView());
  if (!model_ && program != nullptr && !program->modelFile.empty()) {
    model_ = host_.Models().OpenModel(host_.PathOf(program->modelFile));
  }
  return model_.get();
}

void WorkspaceSession::ReloadPrograms() {
  programs_ = catalogue::RegisteredSources(host_);
  // A model that was made anew is opened anew.
  model_.reset();
  if (FindProgram(ProgramOnView()) == nullptr) workspace_.SetObjectID("");
  OnProgramsChanged.Raise();
}

workbench::ScanReport WorkspaceSession::Scan() {
  auto report = ScanWorkspace(host_, {}, screen_.progress);
  ReloadPrograms();
  return report;
}

std::string WorkspaceSession::ReadBytes(std::string_view file) {
  return host_.FileSystem().ReadFile(host_.PathOf(file));
}

std::string WorkspaceSession::Encoding() {
  return host_.Folder().SourceEncoding();
}

workbench::codemodel::TextClassifier WorkspaceSession::Classifier(const platform::CurrentFile& file) {
  if (file.Language != kCobol) return {};
  return workbench::CobolTextClassifier(workbench::ReadSourceOptions(host_.ProjectOptions().Document()), Encoding());
}

}  // namespace qmrules::desktop
