#pragma once

#include <cstdint>
#include <string>

#include "browser/browserservices.h"
#include "browser/objecttree.h"
#include "browser/selectedonly.h"
#include "platform/event.h"
#include "platform/widgets/listview.h"

namespace qmrules::browser {

// The ways that lead from one object to another: a double click on a rule goes to the rule set that it triggers; a
// double click or Enter in a list goes to the object of the row. Grey rows lead nowhere. A jump turns Selected Only
// off, opens what is around its goal, and shows the goal; without a goal nothing is shown.
class TreeJumps {
 public:
  // Both outlive this.
  TreeJumps(const BrowserServices& services, ObjectTree& tree, SelectedOnly& selectedOnly);
  TreeJumps(const TreeJumps&) = delete;
  TreeJumps& operator=(const TreeJumps&) = delete;

  // From the selected rule to the first place of the rule set that it triggers.
  void ToTriggered();
  // From the node on view to the rule set or rule of a row of its children.
  void ToContent(const platform::widgets::ListRow& row);
  // To the rule of a row of triggering rules.
  void ToTrigger(const platform::widgets::ListRow& row);

 private:
  using Jump = void (TreeJumps::*)(const platform::widgets::ListRow&);

  platform::Subscription FollowRows(platform::widgets::ListView& list, Jump jump);
  platform::Subscription FollowEnter(platform::widgets::ListView& list, Jump jump);
  void LeaveSelectedOnly();
  void Reach(const std::string& key, const std::string& aroundKey);

  BrowserServices services_;
  ObjectTree& objects_;
  SelectedOnly& selectedOnly_;
  platform::widgets::TreeView& tree_;
  platform::Subscription treeDoubleClick_;
  platform::Subscription contentDoubleClick_;
  platform::Subscription contentEnter_;
  platform::Subscription triggersDoubleClick_;
  platform::Subscription triggersEnter_;
};

}  // namespace qmrules::browser
