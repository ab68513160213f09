#pragma once

#include "browser/browserservices.h"
#include "browser/objecttree.h"
#include "platform/event.h"
#include "platform/widgets/treenodehandle.h"
#include "platform/widgets/treeview.h"

namespace qmrules::browser {

// What the user does to the tree by mouse and keys: a click shows the node, a change of a check mark is handed on, the
// right button and Shift+F10 open the popup menu, Delete, Ctrl+A and Ctrl+U run their commands.
class TreeInput {
 public:
  // `tree` outlives this.
  TreeInput(const BrowserServices& services, ObjectTree& tree);
  TreeInput(const TreeInput&) = delete;
  TreeInput& operator=(const TreeInput&) = delete;

 private:
  void KeyDown(platform::widgets::KeyPress& press);
  void KeyUp(const platform::widgets::KeyPress& press);
  void MouseDown(const platform::widgets::MousePress& press);
  void MouseUp(const platform::widgets::MousePress& press);
  void NodeCheck(platform::widgets::TreeNode& node);

  BrowserServices services_;
  ObjectTree& objects_;
  platform::widgets::TreeView& tree_;
  platform::widgets::TreeNodeHandle clickNode_;  // under the last press of the left button
  bool clickState_ = false;                      // and its check mark, as last handed on
  platform::Subscription nodeClick_;
  platform::Subscription nodeCheck_;
  platform::Subscription keyDown_;
  platform::Subscription keyUp_;
  platform::Subscription mouseDown_;
  platform::Subscription mouseUp_;
};

}  // namespace qmrules::browser
