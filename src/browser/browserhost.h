#pragma once

#include <string>
#include <string_view>

namespace qmrules::platform::widgets {
class TreeNode;
}

namespace qmrules::browser {

// What the browser asks of the control around it. What a call throws comes through to whoever asked the browser.
class BrowserHost {
 public:
  virtual ~BrowserHost() = default;

  // Sets which commands and panes can be used with the node, nullptr for none.
  virtual void UpdateCommands(platform::widgets::TreeNode* node) = 0;

  // Shows the node in the panes; nullptr empties them. Pending edits may be written meanwhile, and so the tree may
  // have changed behind the call.
  virtual void ShowNode(platform::widgets::TreeNode* node) = 0;

  // The node last shown; nullptr for none and for one that has left the tree.
  virtual platform::widgets::TreeNode* CurrentNode() const = 0;
  // The key of its object; "" for none. It stays when the node leaves the tree.
  virtual std::string CurrentKey() const = 0;
  // The node last shown was taken out and stands in the tree again as this one. Nothing is read or shown.
  virtual void ReplaceCurrentNode(platform::widgets::TreeNode& node) = 0;

  // Sets the state of the command's item in the host's menu: "enable", "disable", "show", "hide", "check" or "uncheck".
  virtual void SetHostItem(std::string_view command, std::string_view state) = 0;

  // True while the control fills the tree on being shown; the load then shows no progress of its own.
  virtual bool IsLoading() const = 0;

  virtual void OpenPopup() = 0;

  // Paints the marks of the segments in the source viewer anew, in the state that they are in.
  virtual void RefreshEmphasis() = 0;

  // Takes the text of a failure in a notification. Nobody is there to catch it: the write that the notification tells
  // of has succeeded.
  virtual void RecordFailure(std::string_view text) = 0;
};

}  // namespace qmrules::browser
