#include "browser/treeinput.h"

namespace qmrules::browser {

using platform::widgets::Key;
using platform::widgets::KeyPress;
using platform::widgets::MouseButton;
using platform::widgets::MousePress;
using platform::widgets::ShiftState;
using platform::widgets::TreeNode;
using platform::widgets::TreeNodeHandle;

TreeInput::TreeInput(const BrowserServices& services, ObjectTree& tree)
    : services_(services),
      objects_(tree),
      tree_(services.widgets.tvObjects),
      nodeClick_(tree_.OnNodeClick.Subscribe([this](TreeNode& node) { objects_.SelectAndShow(node); })),
      nodeCheck_(tree_.OnNodeCheck.Subscribe([this](TreeNode& node) { NodeCheck(node); })),
      keyDown_(tree_.OnKeyDown.Subscribe([this](KeyPress& press) { KeyDown(press); })),
      keyUp_(tree_.OnKeyUp.Subscribe([this](KeyPress& press) { KeyUp(press); })),
      mouseDown_(tree_.OnMouseDown.Subscribe([this](const MousePress& press) { MouseDown(press); })),
      mouseUp_(tree_.OnMouseUp.Subscribe([this](const MousePress& press) { MouseUp(press); })) {}

void TreeInput::KeyDown(KeyPress& press) {
  const bool ctrl = press.shift == ShiftState{.ctrl = true};
  const bool shift = press.shift == ShiftState{.shift = true};
  clickNode_ = {};
  if (press.key == Key::Delete) {
    services_.commands.Run("Delete");
  } else if (press.key == Key::F10 && shift) {
    services_.host.OpenPopup();
  } else if (press.key == Key::A && ctrl) {
    services_.commands.Run("SelectAll");
  } else if (press.key == Key::U && ctrl) {
    services_.commands.Run("UnselectAll");
  } else {
    return;
  }
  press.handled = true;
}

// The arrows up and down always show the node that they lead to; the other keys show it when they have moved.
void TreeInput::KeyUp(const KeyPress& press) {
  TreeNode* const node = tree_.SelectedNode();
  if (node == nullptr) return;
  const bool moves = press.key == Key::Up || press.key == Key::Down;
  const bool mayMove =
      press.key == Key::Home || press.key == Key::End || press.key == Key::Left || press.key == Key::Right;
  if (moves || (mayMove && node != services_.host.CurrentNode())) services_.host.ShowNode(node);
}

void TreeInput::MouseDown(const MousePress& press) {
  if (press.button == MouseButton::Right) {
    services_.host.OpenPopup();
    return;
  }
  TreeNode* const node = tree_.HitTest(press.x, press.y);
  clickNode_ = TreeNodeHandle(node);
  clickState_ = node != nullptr && node->Checked();
}

void TreeInput::MouseUp(const MousePress& press) {
  TreeNode* const node = clickNode_.Get();
  if (press.button != MouseButton::Left || node == nullptr || node->Checked() == clickState_) return;
  clickState_ = node->Checked();
  objects_.CheckChanged(*node);
}

// A check mark that the keyboard has turned over; the mouse's was handed on when the button went up.
void TreeInput::NodeCheck(TreeNode& node) {
  if (clickNode_.Get() != &node || node.Checked() != clickState_) objects_.CheckChanged(node);
}

}  // namespace qmrules::browser
