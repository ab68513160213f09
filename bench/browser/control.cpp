#include "browser/control.h"

namespace qmrules::bench {

Control::Control(workbench::EmbeddedHost& host)
    : host_(host),
      workspace_(host, progress_),
      programChanges_(workspace_.OnObjectIDChanged([this] { BringProgramIntoView(); })),
      control_({.globals = host.Globals(),
                .texts = shell::StringTableFor(shell::Language::English),
                .fileSystem = host.FileSystem(),
                .registry = host.Registry(),
                .settings = settings_,
                .clock = host.Clock(),
                .databases = host.Databases(),
                .tracing = tracing_,
                .dialogs = dialogs_,
                .pointer = pointer_,
                .repairIsDue = [&host] { return host.RepairIsDue(); },
                .repairIsDone = [&host] { host.RepairIsDone(); }}) {
  workspace_.AddComponent("QMSource", viewerComponent_);
  workspace_.SetViewer(viewer_);
  control_.Init(workspace_, "QMRules", "Business Rules");
}

void Control::BringProgramIntoView() {
  const auto program = host_.Repository().object(workspace_.ObjectID());
  viewer_.SetFiles({{program->Attrs("Source").Text(), "COBOL"}});
}

}  // namespace qmrules::bench
