#pragma once

#include <string>
#include <unordered_set>

#include "browser/browserservices.h"
#include "browser/commandfaces.h"
#include "browser/objecttree.h"
#include "browser/selectedkeys.h"

namespace qmrules::browser {

// The view that shows of the tree only what is checked or selected, with the nodes above. The mark of the command
// `Selected`, on its menu item, is the one state.
class SelectedOnly {
 public:
  // Both outlive this.
  SelectedOnly(const BrowserServices& services, ObjectTree& tree, SelectedKeys& selectedKeys);

  bool IsOn() const { return faces_.IsChecked("Selected"); }

  // The command `Selected`.
  void Toggle();

  // Reads the rules of the checked rule sets that have not been opened, marks the command, takes out of the tree all
  // that is neither checked nor selected, and shows the selected node. Throws Error, with no node taken out and the
  // command not marked, when the repository fails.
  void TurnOn();

  // Fills the tree again around what stands in it, takes the mark away and paints the marks of the segments anew.
  // Throws Error, with the command still marked, when the repository fails.
  void TurnOff();

  // Takes the mark away and leaves the tree as it is.
  void ClearMark() { faces_.SetChecked("Selected", false); }

 private:
  using Keys = std::unordered_set<std::string>;

  void LoadCheckedRuleSets();
  Keys CheckedKeys() const;
  void AddPlacesOfSelected(Keys& kept) const;
  void AddPlacesOf(const std::string& ruleIDs, Keys& kept) const;
  void RemoveAllBut(const Keys& kept);

  BrowserServices services_;
  ObjectTree& objects_;
  SelectedKeys& selectedKeys_;
  platform::widgets::TreeView& tree_;
  CommandFaces faces_;
};

}  // namespace qmrules::browser
