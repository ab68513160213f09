#pragma once

#include "browser/browserservices.h"
#include "browser/commandfaces.h"
#include "browser/objecttree.h"
#include "catalogue/sequence.h"
#include "platform/widgets/treeview.h"

namespace qmrules::browser {

// The commands `MoveUp` and `MoveDown`.
class MoveInSequence {
 public:
  // `tree` outlives this.
  MoveInSequence(const BrowserServices& services, const ObjectTree& tree);

  // Swaps the selected rule set or rule with the neighbour on that side: their numbers in the repository and their
  // places in the tree. A rule changes its place wherever its rule set is
  // open, a rule set under its own function only; its rules are read again when it is opened next. Does nothing for a
  // business function, without a neighbour, and without a selected node. Throws Error when the repository fails, with
  // the tree as it was; a number that was written stays.
  void Run(catalogue::Direction direction);

 private:
  platform::widgets::TreeNode& Rebuild(platform::widgets::TreeNode& node, platform::widgets::TreeNode& neighbour,
                                       catalogue::Direction direction);
  void SwapElsewhere(const platform::widgets::TreeNode& moved, const platform::widgets::TreeNode& neighbour);
  void SwapPlaces(platform::widgets::TreeNode& first, platform::widgets::TreeNode& second);

  BrowserServices services_;
  const ObjectTree& objects_;
  platform::widgets::TreeView& tree_;
  CommandFaces faces_;
};

}  // namespace qmrules::browser
