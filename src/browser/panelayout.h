#pragma once

#include "browser/attributepanel.h"
#include "browser/browserservices.h"
#include "platform/event.h"
#include "platform/widgets/treenode.h"

namespace qmrules::browser {

// Which widgets of the panes are in sight: those for the kind of the node and, where two stand in one place, the one
// whose tab is in front. A widget that stays in sight is not hidden in between, so that the focus stays in it.
class PaneLayout {
 public:
  // Both outlive this.
  PaneLayout(const BrowserServices& services, AttributePanel& attributes);
  PaneLayout(const PaneLayout&) = delete;
  PaneLayout& operator=(const PaneLayout&) = delete;

  // Told in detailpanes.h.
  void ShowPanesFor(const platform::widgets::TreeNode* node);

 private:
  void SetTabCaptions(int description, int business);
  bool DescriptionTabInFront() const;
  bool DataElementsTabInFront() const;
  void BringDescriptionToFront();
  void BringListToFront();

  const shell::StringTable& texts_;
  const platform::TesselGlobals& globals_;
  ControlWidgets& widgets_;
  AttributePanel& attributes_;
  platform::Subscription descriptionTab_;
  platform::Subscription listTab_;
};

}  // namespace qmrules::browser
