#pragma once

#include "browser/browserservices.h"
#include "browser/commandfaces.h"

namespace qmrules::shell {

// Which commands can be used with the current node.
class CommandAvailability {
 public:
  explicit CommandAvailability(const browser::BrowserServices& services) : services_(services), faces_(services) {}

  // Enables and disables the commands for the node, nullptr for none, wherever they are shown. The commands that do not
  // depend on a node keep their state.
  void Update(const platform::widgets::TreeNode* node) const;

 private:
  browser::BrowserServices services_;
  browser::CommandFaces faces_;
};

}  // namespace qmrules::shell
