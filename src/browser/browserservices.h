#pragma once

#include <string>

#include "browser/browserhost.h"
#include "browser/controlwidgets.h"
#include "platform/clock.h"
#include "platform/commandsink.h"
#include "platform/dialogs.h"
#include "platform/frontend.h"
#include "platform/pointer.h"
#include "platform/progress.h"
#include "platform/tesselglobals.h"
#include "platform/workspace.h"
#include "shell/messages.h"

namespace qmrules::browser {

// What all parts of the browser work on. Everything outlives them.
struct BrowserServices {
  platform::Workspace& QMWS;
  platform::FrontEnd& FE;
  platform::Progress& progress;
  platform::Dialogs& dialogs;
  platform::Pointer& pointer;
  const platform::Clock& clock;
  const shell::StringTable& texts;
  const platform::TesselGlobals& globals;
  platform::CommandSink& commands;
  BrowserHost& host;
  ControlWidgets& widgets;

  platform::Repository& Repository() const { return FE.Repository(); }
  // Throws Error when no project is chosen.
  std::string ProjectKey() const { return FE.ProjectObject()->ObjectID(); }
};

}  // namespace qmrules::browser
