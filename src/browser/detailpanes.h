#pragma once

#include <string>
#include <string_view>

#include "browser/attributepanel.h"
#include "browser/browserservices.h"
#include "browser/currentobject.h"
#include "browser/objecttree.h"
#include "browser/paneedits.h"
#include "browser/panelayout.h"
#include "browser/rulelists.h"
#include "browser/segmentview.h"

namespace qmrules::browser {

struct NodeDetails;

// The panes beside the tree: name, descriptions, lists and attributes of the current node's object. Showing a node
// reads its object; a field writes itself when the focus leaves it, the name also on Enter.
//
// Made for widgets without another DetailPanes: it puts the fields into the attribute panel and the items into
// `mnuAuxMain`, and hears the widgets' events as long as it lives. Whoever implements BrowserHost hands CurrentNode,
// CurrentKey, ReplaceCurrentNode and ShowNode on to it, and calls ShowPanesFor from UpdateCommands.
class DetailPanes {
 public:
  // `tree` and what `source` refers to outlive this. Throws Error as AttributePanel does.
  DetailPanes(const BrowserServices& services, ObjectTree& tree, const AttributeSource& source);
  DetailPanes(const DetailPanes&) = delete;
  DetailPanes& operator=(const DetailPanes&) = delete;

  // Writes what is pending in the fields, lets the host update the commands, and fills the panes from the node's
  // object; nullptr and a placeholder leave them empty. For a rule with a segment its program is brought into the
  // source viewer and the segment selected there. Pending texts that are refused are dropped without a word.
  //
  // Throws Error when the repository fails or the object is gone: the panes are then hidden and empty, with no current
  // object, so that nothing can be typed that would be lost.
  void ShowNode(platform::widgets::TreeNode* node);

  // Shows the widgets for this kind of node and hides the others, with the captions of the tabs and the field of the
  // tab that is in front; nullptr hides all. Reads nothing.
  void ShowPanesFor(const platform::widgets::TreeNode* node);

  // The node last shown; nullptr for none and for one that has left the tree.
  platform::widgets::TreeNode* CurrentNode() const { return current_.node.Get(); }
  // The key of its object; "" for none. It stays when the node leaves the tree.
  const std::string& CurrentKey() const { return current_.key; }
  // The node last shown was taken out and stands in the tree again as this one. Nothing is read or shown.
  void ReplaceCurrentNode(platform::widgets::TreeNode& node);

  // The save handlers; told in paneedits.h.
  PaneEdits& Edits() { return edits_; }
  // Runs the handler of the field that has the focus, as the focus leaving it does. False when the handler cancels,
  // which it has told the user of; true without such a field. Throws Error when the change cannot be written.
  bool CommitActiveField() { return edits_.CommitActiveField(); }
  // Runs the handlers of the long texts, the name and the attributes. Throws the first Error, after trying the others.
  void CommitAll() { edits_.CommitAll(); }
  // True when a field holds a text that is not written yet.
  bool IsEdited() const { return edits_.IsEdited(); }

  const AttributePanel& Attributes() const { return attributes_; }
  // Shows an attribute's new value, which is stored already, in its field and the field's tag; nothing for an attribute
  // without a field in the panel.
  void ShowAttribute(std::string_view attribute, const std::string& text) { attributes_.Show(attribute, text); }

 private:
  void Fill(const NodeDetails& details);

  BrowserServices services_;
  ObjectTree& objects_;
  CurrentObject current_;
  AttributePanel attributes_;
  PaneLayout layout_;
  SegmentView segment_;
  PaneEdits edits_;
  RuleLists lists_;
};

}  // namespace qmrules::browser
