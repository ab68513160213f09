#pragma once

#include <QMenu>
#include <string>
#include <vector>

#include "platform/memoryworkspace.h"

namespace qmrules::desktop {

// The host's menu of one component: the commands that it registered, in their order with their separators and in their
// present states. Choosing one requests it of the component.
class HostMenu final : public QMenu {
 public:
  explicit HostMenu(std::string component, QWidget* parent = nullptr);

  // Shows the commands of this workspace from now on; nullptr for none. It outlives this, or the next call.
  void SetWorkspace(platform::MemoryWorkspace* workspace);

 private:
  void Fill();
  void ShowStates();
  void RefreshSoon();

  std::string component_;
  platform::MemoryWorkspace* workspace_ = nullptr;
  platform::Subscription changes_;
  std::vector<QAction*> actions_;  // one for each of the component's commands, the menu itself left out
  bool isStale_ = false;
};

}  // namespace qmrules::desktop
