#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/registeredsources.h"
#include "desktop/source/sourcetexts.h"
#include "platform/dialogs.h"
#include "platform/memorysourceviewer.h"
#include "platform/memoryworkspace.h"
#include "platform/notracing.h"
#include "platform/pointer.h"
#include "platform/progress.h"
#include "platform/sourceviewercomponent.h"
#include "shell/messages.h"
#include "shell/qmrules.h"
#include "workbench/host/embeddedhost.h"
#include "workbench/host/workspacescan.h"

namespace qmrules::desktop {

// The name by which the workspace knows the control.
inline constexpr const char* kControlName = "QMRules";

// One open workspace: its host, the program on view, and the control over them. It knows no window.
class WorkspaceSession final : public SourceTexts {
 public:
  // What the window lends; all of it outlives the session.
  struct Screen {
    platform::Dialogs& dialogs;
    platform::Pointer& pointer;
    platform::Progress& progress;
  };

  // Opens the workspace in the folder, with its programs read and none on view; there is no control yet. Throws
  // platform::Error as EmbeddedHost does.
  WorkspaceSession(const std::string& folder, workbench::HostServices services, Screen screen);
  ~WorkspaceSession() override;
  WorkspaceSession(const WorkspaceSession&) = delete;
  WorkspaceSession& operator=(const WorkspaceSession&) = delete;

  // Makes the control, in the language of the texts, and initialises it; `externalName` is the caption of its menu and
  // of its message boxes. One that there is must have ended. Throws platform::Error as QMRules::Init does; there is no
  // control then.
  void StartControl(const shell::StringTable& texts, const std::string& externalName);
  // Ends the control, whose commands leave the workspace; does nothing without one. Throws platform::Error as
  // QMRules::DeInit does; the control has ended all the same, but lives on until DropControl.
  void EndControl();
  // Called when nothing shows the control any more.
  void DropControl() { control_.reset(); }

  workbench::EmbeddedHost& Host() { return host_; }
  platform::MemoryWorkspace& Workspace() { return workspace_; }
  platform::MemorySourceViewer& Viewer() { return viewer_; }
  // nullptr before StartControl and after DropControl.
  shell::QMRules* Control() { return control_.get(); }

  // The project's programs, by language and name.
  const std::vector<catalogue::RegisteredSource>& Programs() const { return programs_; }
  // The program of this key, or nullptr.
  const catalogue::RegisteredSource* FindProgram(std::string_view key) const;
  // The key of the program on view; "" for none.
  std::string ProgramOnView() const { return workspace_.ObjectID(); }

  // Puts a program on view, as the workspace's current object; "" for none. Throws platform::Error, with the old one
  // still on view, when its source cannot be read.
  void ShowProgram(const std::string& key);

  // Reads the programs again. One that is on view and is no more goes off view.
  void ReloadPrograms();

  // Scans all sources of the workspace and reads the programs again. Throws platform::Error as ScanWorkspace does.
  workbench::ScanReport Scan();

  // Whatever changed in the list of programs, or which one is on view.
  platform::Event<> OnProgramsChanged;
  platform::Event<> OnProgramOnViewChanged;

  std::string ReadBytes(std::string_view file) override;
  std::string Encoding() override;
  workbench::codemodel::TextClassifier Classifier(const platform::CurrentFile& file) override;

 private:
  void RequireReadable(const catalogue::RegisteredSource& program);
  std::vector<platform::CurrentFile> FilesOf(const catalogue::RegisteredSource& program);
  bool Admits(std::string_view key);
  void ProgramChanged();
  platform::SourceModel* Model();

  workbench::EmbeddedHost host_;
  Screen screen_;
  platform::NoTracing tracing_;
  std::vector<catalogue::RegisteredSource> programs_;
  platform::MemorySourceViewer viewer_;
  platform::SourceViewerComponent viewerComponent_{viewer_};
  platform::MemoryWorkspace workspace_;
  platform::Subscription objectChanges_;
  std::unique_ptr<platform::SourceModel> model_;  // of the program on view, once it was asked for
  std::unique_ptr<shell::QMRules> control_;
};

}  // namespace qmrules::desktop
