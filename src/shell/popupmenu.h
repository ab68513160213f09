#pragma once

#include <string>
#include <string_view>

#include "platform/commandsink.h"
#include "platform/dialogs.h"
#include "platform/widgets/menu.h"
#include "shell/failurereport.h"

namespace qmrules::shell {

// The popup menu of the tree. A command that opens a modal window must not do so inside the open menu: it asks PutOff
// first, and is run again once the menu has closed.
class PopupMenu {
 public:
  // All outlive this.
  PopupMenu(platform::Dialogs& dialogs, platform::widgets::Menu& menu, platform::CommandSink& commands,
            const FailureReport& failures)
      : dialogs_(dialogs), menu_(menu), commands_(commands), failures_(failures) {}

  // Shows the menu, lets the chosen command run, and then the one that was put off meanwhile.
  void Open();

  // True while the menu is open: the command of this key runs when it has closed.
  bool PutOff(std::string_view command);

  // Forgets what was put off.
  void ClearPending() { pendingAction_.clear(); }

 private:
  platform::Dialogs& dialogs_;
  platform::widgets::Menu& menu_;
  platform::CommandSink& commands_;
  const FailureReport& failures_;
  std::string pendingAction_;  // "" while the menu is closed; no command's key until one is put off
};

}  // namespace qmrules::shell
