// Every handler of the panes while the repository fails, and after its object was deleted.

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "browser/detailpanestest.h"
#include "browser/moveinsequence.h"
#include "support/errortext.h"

namespace qmrules::browser {
namespace {

using platform::widgets::ComboBox;
using platform::widgets::TextBox;
using platform::widgets::Widget;

enum class Shown { Function, RuleSet, Rule };

// A field, with the attribute that its handler writes.
struct Handler {
  const char* name;
  Shown shown;
  const char* attribute;
  bool tellsOfFailures = true;  // of its write; a failing record is told of in any case
};

void PrintTo(const Handler& handler, std::ostream* out) {
  *out << handler.name;
}

class PaneHandlers : public DetailPanesTest, public testing::WithParamInterface<Handler> {
 protected:
  PaneHandlers() { store.Put(ruleKey, "Status", "new"); }

  std::string Key() const {
    if (GetParam().shown == Shown::Rule) return ruleKey;
    return GetParam().shown == Shown::RuleSet ? setKey : functionKey;
  }
  bool IsName() const { return std::string_view(GetParam().name).ends_with("Name"); }
  std::string Stored() { return DetailPanesTest::Stored(Key(), GetParam().attribute); }
  std::string NodeKey() const {
    const std::string function = "f" + std::to_string(billing);
    if (GetParam().shown == Shown::Rule) return function + "r" + std::to_string(baseFee);
    return GetParam().shown == Shown::RuleSet ? function + "s" + std::to_string(fees) : function;
  }
  void Show() {
    tvObjects.Expand(*tvObjects.Find("f" + std::to_string(billing)));
    if (GetParam().shown == Shown::Rule) {
      tvObjects.Expand(*tvObjects.Find("f" + std::to_string(billing) + "s" + std::to_string(fees)));
    }
    tvObjects.Click(*tvObjects.Find(NodeKey()));
  }

  Widget& Field() {
    const std::string_view attribute = GetParam().attribute;
    if (IsName()) return widgets.txtObjName;
    if (attribute == "Description") return rtbDescription;
    if (attribute == "BusinessArea" || attribute == "BusinessDescription") return rtbBusiness;
    if (attribute == "Status") return Choice("Status");
    return attribute == "Remark" ? static_cast<Widget&>(LongText("Remark")) : Text("Owner");
  }
  // The user goes to the field and changes what it shows.
  void Edit(const std::string& text) {
    if (&Field() == &rtbBusiness) widgets.tsDescrs.Choose("Business");
    if (auto* const choice = dynamic_cast<ComboBox*>(&Field())) {
      EXPECT_TRUE(choice->ChooseText(text));
    } else {
      EXPECT_TRUE(dynamic_cast<TextBox&>(Field()).Enter(text));
    }
  }
  // A value that is not stored yet.
  std::string Another(int number) {
    if (std::string_view(GetParam().attribute) == "Status") return Stored() == "new" ? "approved" : "new";
    return "text " + std::to_string(number);
  }
  std::string FailureOfLeaving() {
    return test::ErrorText([this] { Leave(); });
  }

  // How often the control has opened the object since the last Arm.
  std::ptrdiff_t Openings() const { return std::count(watch.opened.begin(), watch.opened.end(), Key()); }
};

TEST_P(PaneHandlers, WritesOnceWhenTheFocusLeaves) {
  Show();
  const std::string value = Another(0);
  Edit(value);
  EXPECT_TRUE(Leave());
  EXPECT_EQ(Stored(), value);
  watch.opened.clear();
  EXPECT_TRUE(Field().SetFocus());
  EXPECT_TRUE(Leave());
  EXPECT_EQ(Openings(), 0);
  EXPECT_EQ(repository.CountObjects("RULELOG", {}), GetParam().shown == Shown::Rule ? 1 : 0);
}

TEST_P(PaneHandlers, AFailureAtAnyWriteLeavesTheOldValueOrTheNewOneAndAControlThatGoesOn) {
  int failures = 0;
  for (int write = 1;; ++write) {
    Show();
    const std::string before = Stored();
    const std::string value = Another(write);
    const auto records = Log().size();
    Edit(value);
    fault.Arm(write);
    const std::string failure = FailureOfLeaving();
    const bool reached = fault.seen >= write;
    fault.Arm(0);
    const bool isWritten = Stored() == value;
    if (!reached) {
      EXPECT_EQ(failure, "(no error)");
      EXPECT_TRUE(isWritten);
      break;
    }
    ++failures;
    EXPECT_TRUE(isWritten || Stored() == before) << write;
    EXPECT_EQ(Log().size(), records) << write;
    const bool callsFollow = IsName() && GetParam().shown != Shown::Rule;  // and are told of when they cannot
    const bool isTold = isWritten || GetParam().tellsOfFailures || (callsFollow && failure != "(no error)");
    EXPECT_EQ(failure, isTold ? test::kFaultText : "(no error)") << write;
    EXPECT_TRUE(dialogs.History().empty());
    EXPECT_FALSE(pointer.IsBusy());
    EXPECT_TRUE(!IsName() || tvObjects.Find(NodeKey())->Text() == Stored()) << write;
    EXPECT_FALSE(panes.IsEdited()) << "it is not tried again";
    EXPECT_TRUE(Leave());
    ASSERT_LT(write, 100);
  }
  EXPECT_GT(failures, 0);
  panes.ShowNode(tvObjects.Find(NodeKey()));
  EXPECT_EQ(panes.CurrentKey(), Key());
}

TEST_P(PaneHandlers, WritesNothingToAnObjectThatAnotherProcessHasDeleted) {
  Show();
  Edit(Another(0));
  DeleteElsewhere(Key());
  const std::string failure = FailureOfLeaving();
  if (GetParam().tellsOfFailures && !IsName()) {
    EXPECT_NE(failure.find(Key()), std::string::npos) << failure;
  } else {
    EXPECT_EQ(failure, "(no error)");
  }
  EXPECT_TRUE(dialogs.History().empty());
  EXPECT_FALSE(pointer.IsBusy());
  EXPECT_TRUE(Leave()) << "the user is let go";
  EXPECT_NE(test::ErrorText([this] { repository.object(Key()); }), "(no error)");
  EXPECT_EQ(repository.CountObjects("RULELOG", {}), 0);
  const auto changes = repository.TakeForeignChanges();
  EXPECT_FALSE(changes.objects.empty());
  EXPECT_EQ(tvObjects.Find(NodeKey()), nullptr);
  panes.ShowNode(tvObjects.SelectedNode());
  EXPECT_NE(panes.CurrentKey(), Key());
}

TEST_P(PaneHandlers, WritesNothingToAnObjectThatWasDeletedWhileItsFieldIsEdited) {
  Show();
  Edit(Another(0));
  DeleteElsewhere(Key());
  static_cast<void>(repository.TakeForeignChanges());
  EXPECT_EQ(panes.CurrentNode(), nullptr);
  watch.opened.clear();
  const std::string failure = FailureOfLeaving();
  const bool isAttribute = !IsName() && GetParam().tellsOfFailures;
  if (isAttribute) {
    EXPECT_NE(failure.find(Key()), std::string::npos) << "the user is told that the text is lost: " << failure;
  } else {
    EXPECT_EQ(failure, "(no error)");
    EXPECT_EQ(Openings(), 0);
  }
  EXPECT_TRUE(Leave());
  panes.CommitAll();
  EXPECT_EQ(repository.CountObjects("RULELOG", {}), 0);
  EXPECT_TRUE(dialogs.History().empty());
  panes.ShowNode(tvObjects.SelectedNode());
  EXPECT_TRUE(host.failures.empty());
  EXPECT_NE(panes.CurrentKey(), Key());
}

constexpr bool kSilent = false;

INSTANTIATE_TEST_SUITE_P(
    EachField, PaneHandlers,
    testing::Values(Handler{"FunctionName", Shown::Function, "Name", kSilent},
                    Handler{"FunctionDescription", Shown::Function, "Description", kSilent},
                    Handler{"FunctionBusinessArea", Shown::Function, "BusinessArea", kSilent},
                    Handler{"RuleSetName", Shown::RuleSet, "Name", kSilent},
                    Handler{"RuleSetDescription", Shown::RuleSet, "Description", kSilent},
                    Handler{"RuleName", Shown::Rule, "RuleName", kSilent},
                    Handler{"RuleDescription", Shown::Rule, "Description", kSilent},
                    Handler{"RuleBusinessDescription", Shown::Rule, "BusinessDescription", kSilent},
                    Handler{"RuleText", Shown::Rule, "Owner"}, Handler{"RuleChoice", Shown::Rule, "Status"},
                    Handler{"RuleLongText", Shown::Rule, "Remark"}),
    [](const auto& info) { return std::string(info.param.name); });

// What leads to an object while the tree still has the node of it, and another process has deleted it.
class GoneObjects : public DetailPanesTest {
 protected:
  // Deletes the object elsewhere, then acts; the failure must name it, and leave panes without an object.
  template <class Action>
  void ExpectToldOf(const std::string& key, const Action& action) {
    DeleteElsewhere(key);
    EXPECT_EQ(test::ErrorText(action), key + " has been deleted. Refresh the tree to see what is there.");
    EXPECT_EQ(VisibleWidgets(), "");
    EXPECT_EQ(panes.CurrentKey(), "");
    EXPECT_FALSE(pointer.IsBusy());
    EXPECT_TRUE(dialogs.History().empty());
  }
};

TEST_F(GoneObjects, ARuleSetDoesNotOpen) {
  tvObjects.Expand(Node("Billing"));
  auto& set = *Node("Billing").FirstChild();
  ExpectToldOf(setKey, [&] { tvObjects.Expand(set); });
  EXPECT_FALSE(set.Expanded());
  EXPECT_EQ(set.ChildCount(), 1U);
}

TEST_F(GoneObjects, ARowOfARuleSetLeadsToNoRule) {
  ShowRule("Late fee");
  ShowRuleSet("Billing", "Fees");
  ExpectToldOf(ruleKey, [&] { lvContent.DoubleClick(lvContent.Row(0)); });
}

TEST_F(GoneObjects, ARowOfAFunctionLeadsToNoRuleSet) {
  ShowFunction("Billing");
  ExpectToldOf(setKey, [&] { lvContent.DoubleClick(lvContent.Row(0)); });
}

TEST_F(GoneObjects, ATriggeringRuleIsNotFoundAndNothingElseIsShown) {
  const auto tax = store.AddRule(taxes, "Tax", 1);
  repository.object("RULE#" + std::to_string(tax))->Link("Triggers", setKey);
  ShowRuleSet("Billing", "Fees");
  DeleteElsewhere("RULE#" + std::to_string(tax));
  EXPECT_EQ(test::ErrorText([&] { lvTriggers.DoubleClick(lvTriggers.Row(0)); }), "(no error)");
  EXPECT_EQ(panes.CurrentKey(), setKey);
}

TEST_F(GoneObjects, ATriggeredRuleSetIsNotShown) {
  repository.object(ruleKey)->Link("Triggers", "RULESET#" + std::to_string(taxes));
  ShowRule("Base fee");
  ExpectToldOf("RULESET#" + std::to_string(taxes), [&] { jumps.ToTriggered(); });
}

TEST_F(GoneObjects, ARuleSetIsNotMoved) {
  store.AddCall(billing, taxes, 2);
  ShowRuleSet("Billing", "Fees");
  MoveInSequence mover(services, objects);
  const std::string before = Tree();
  DeleteElsewhere(setKey);
  EXPECT_NE(test::ErrorText([&] { mover.Run(catalogue::Direction::Down); }).find(setKey), std::string::npos);
  EXPECT_EQ(Tree(), before);
  EXPECT_FALSE(pointer.IsBusy());
}

TEST_F(GoneObjects, ADataElementLeadsNowhereAndItsRowGoesWithTheNextLook) {
  const auto element = AddElement("RULEIO", {{"IOName", "RATE"}});
  ShowRule("Base fee");
  DeleteElsewhere("RULEIO#" + std::to_string(element));
  EXPECT_EQ(test::ErrorText([&] { lvIOElems.DoubleClick(lvIOElems.Row(0)); }), "(no error)");
  static_cast<void>(repository.TakeForeignChanges());
  EXPECT_EQ(lvIOElems.Count(), 0U);
}

}  // namespace
}  // namespace qmrules::browser
