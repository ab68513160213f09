// The control while another process writes to the same store.

#include <gtest/gtest.h>

#include "catalogue/gateway.h"
#include "shell/controltest.h"
#include "workbench/repository/store.h"

namespace qmrules::shell {
namespace {

using catalogue::MakeKey;
using platform::Value;

class ForeignChangesToTheControl : public ControlTest {
 protected:
  ForeignChangesToTheControl() {
    Open();
    OpenAll();
    Click("Late fee");
  }

  void PutElsewhere(const std::string& key, const std::string& attribute, const std::string& value) {
    const auto object = there->object(key);
    object->Edit();
    object->Attrs(attribute, Value(value));
    object->Post();
  }
  void Take() { control.MendFromStore(repository.TakeForeignChanges()); }

  std::unique_ptr<platform::Repository> there =
      workbench::repository::OpenStore({.path = store.StorePath(),
                                        .extensionPath = store.Folder().File("product/User.Repstry.xml"),
                                        .userName = "somebody else",
                                        .connect = {}},
                                       store.Clock());
};

TEST_F(ForeignChangesToTheControl, ShowInTheTreeAndInThePanesOfTheObject) {
  PutElsewhere(MakeKey("RULE", lateFee), "RuleName", "Late charge");
  PutElsewhere(MakeKey("RULE", lateFee), "Description", "Five per cent");
  Take();
  EXPECT_EQ(SelectedText(), "Late charge");
  EXPECT_EQ(widgets.txtObjName.Text(), "Late charge");
  EXPECT_EQ(widgets.rtbDescription.Text(), "Five per cent");
}

TEST_F(ForeignChangesToTheControl, LeaveAFieldThatIsBeingEditedAlone) {
  widgets.rtbDescription.SetFocus();
  widgets.rtbDescription.Enter("What I am writing");
  PutElsewhere(MakeKey("RULE", lateFee), "RuleName", "Late charge");
  PutElsewhere(MakeKey("RULE", lateFee), "Description", "Five per cent");
  Take();
  EXPECT_EQ(SelectedText(), "Late charge");
  EXPECT_EQ(widgets.rtbDescription.Text(), "What I am writing");
  EXPECT_EQ(store.Get(MakeKey("RULE", lateFee), "Description").Text(), "Five per cent") << "nor is it written yet";
}

TEST_F(ForeignChangesToTheControl, OfOtherObjectsLeaveThePanesAndTheSourceAlone) {
  viewer.SetRow(1);
  PutElsewhere(MakeKey("RULE", baseFee), "Description", "Not on view");
  PutElsewhere(MakeKey("RULESET", taxes), "Description", "Not on view");
  widgets.rtbDescription.SetText("A mark that showing again would wipe out");
  widgets.rtbDescription.SetTag("A mark that showing again would wipe out");
  Take();
  EXPECT_EQ(widgets.rtbDescription.Text(), "A mark that showing again would wipe out");
  EXPECT_EQ(viewer.Row(), 1);
}

TEST_F(ForeignChangesToTheControl, ThatDeleteTheObjectOnViewShowTheNodeThatTookItsPlace) {
  widgets.rtbDescription.SetFocus();
  there->object(MakeKey("RULE", lateFee))->Delete();
  Take();
  EXPECT_EQ(SelectedText(), "Last fee");
  EXPECT_EQ(widgets.txtObjName.Text(), "Last fee");
}

TEST_F(ForeignChangesToTheControl, OfADataElementShowInItsRow) {
  const auto element = there->NewObject("RULEIO", "io1");
  there->object(MakeKey("RULE", lateFee))->Link("Has", element->Key());
  PutElsewhere(element->Key(), "IOName", "FL-FEE");
  Take();
  ASSERT_EQ(widgets.lvIOElems.Count(), 1U);
  PutElsewhere(element->Key(), "IOName", "FL-CHARGE");
  Take();
  EXPECT_EQ(widgets.lvIOElems.Row(0).SubItem("IOName"), "FL-CHARGE");
}

TEST_F(ForeignChangesToTheControl, OfTheTriggeredRuleSetShowInTheField) {
  there->object(MakeKey("RULE", lateFee))->Link("Triggers", MakeKey("RULESET", taxes));
  Take();
  EXPECT_EQ(widgets.txtTriggers.Text(), "Taxes");
  PutElsewhere(MakeKey("RULESET", taxes), "Name", "Levies");
  Take();
  EXPECT_EQ(widgets.txtTriggers.Text(), "Levies");
}

TEST_F(ForeignChangesToTheControl, AreLeftToTheNextShowWhileItIsHidden) {
  control.Hide();
  PutElsewhere(MakeKey("BUSINESSFUNC", billing), "Name", "Bill");
  Take();
  EXPECT_EQ(Tree().find("Bill\n"), std::string::npos);
  control.Show();
  EXPECT_NE(Tree().find("Bill\n"), std::string::npos);
}

TEST_F(ForeignChangesToTheControl, ThatCannotBeReadAreRecordedWithoutABox) {
  PutElsewhere(MakeKey("RULE", lateFee), "RuleName", "Late charge");
  const auto changes = repository.TakeForeignChanges();
  watch.Arm(1);
  control.MendFromStore(changes);
  watch.Arm(0);
  EXPECT_EQ(workspace.Errors(), std::vector<std::string>{browser::kReadFault});
  EXPECT_EQ(SelectedText(), "Late fee");
}

TEST_F(ForeignChangesToTheControl, InLargeNumbersMendTheWholeTree) {
  {
    const auto command = there->BeginCommand("Import");
    for (std::size_t number = 0; number <= platform::kMostForeignChanges; ++number) {
      PutElsewhere(MakeKey("RULE", lateFee), "RuleName", "Late charge " + std::to_string(number));
    }
  }
  const auto changes = repository.TakeForeignChanges();
  ASSERT_TRUE(changes.areTooMany);
  control.MendFromStore(changes);
  EXPECT_EQ(SelectedText(), widgets.txtObjName.Text());
  EXPECT_EQ(SelectedText(), "Late charge " + std::to_string(platform::kMostForeignChanges));
}

}  // namespace
}  // namespace qmrules::shell
