#pragma once

#include <string>

#include "browser/controlwidgets.h"
#include "platform/memorysourceviewer.h"
#include "platform/memoryworkspace.h"
#include "platform/notracing.h"
#include "platform/pointer.h"
#include "platform/progress.h"
#include "platform/scripteddialogs.h"
#include "platform/settings.h"
#include "platform/sourceviewercomponent.h"
#include "shell/qmrules.h"
#include "workbench/host/embeddedhost.h"

namespace qmrules::bench {

// The product's control over a workspace without a screen, with a source viewer that knows the program's file. A
// message to the user ends the program: nothing that is measured here fails.
class Control {
 public:
  // The host outlives the control.
  explicit Control(workbench::EmbeddedHost& host);
  ~Control() { control_.DeInit(); }
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  void Show() { control_.Show(); }
  browser::ControlWidgets& Widgets() { return control_.Widgets(); }
  platform::widgets::TreeView& Tree() { return control_.Widgets().tvObjects; }

 private:
  void BringProgramIntoView();

  workbench::EmbeddedHost& host_;
  platform::MemorySettings settings_;
  platform::NoTracing tracing_{"Nothing is traced here."};
  platform::ScriptedDialogs dialogs_;
  platform::MemoryPointer pointer_;
  platform::SilentProgress progress_;
  platform::MemorySourceViewer viewer_;
  platform::SourceViewerComponent viewerComponent_{viewer_};
  platform::MemoryWorkspace workspace_;
  platform::Subscription programChanges_;
  shell::QMRules control_;
};

}  // namespace qmrules::bench
