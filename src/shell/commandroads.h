#pragma once

#include <functional>
#include <string>
#include <vector>

#include "browser/controlwidgets.h"
#include "platform/commandsink.h"
#include "platform/event.h"
#include "platform/tesselglobals.h"
#include "platform/workspace.h"
#include "shell/failurereport.h"

namespace qmrules::shell {

// The ways by which the user's commands come in: the host's menu, the tool bar with the menus of its buttons, and the
// control's own menu. (Keys come by the widgets that they are pressed in.) Whichever it is, the edit of the field that
// has the focus is committed first, and a command is not carried out when that is refused: the user would lose what the
// field holds. Failures are told to the user.
class CommandRoads {
 public:
  // `commitPendingEdit` gives false when the field keeps the focus. The others outlive this.
  CommandRoads(platform::Workspace& workspace, const platform::TesselGlobals& globals, browser::ControlWidgets& widgets,
               platform::CommandSink& commands, const FailureReport& failures, std::function<bool()> commitPendingEdit);
  CommandRoads(const CommandRoads&) = delete;
  CommandRoads& operator=(const CommandRoads&) = delete;

 private:
  void QMWS_MethodRequested(const std::string& who, const std::string& actionid, platform::Value& result);
  void Run(std::string_view key);

  const platform::TesselGlobals& globals_;
  platform::CommandSink& commands_;
  const FailureReport& failures_;
  std::function<bool()> commitPendingEdit_;
  platform::Subscription methodRequested_;
  platform::Subscription buttonClick_;
  platform::Subscription buttonMenuClick_;
  std::vector<platform::Subscription> menuClicks_;
};

}  // namespace qmrules::shell
