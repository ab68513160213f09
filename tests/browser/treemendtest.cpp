#include "browser/treemend.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>

#include "browser/browsertest.h"
#include "browser/commandwidgets.h"
#include "catalogue/gateway.h"
#include "catalogue/nodekeys.h"
#include "catalogue/sequence.h"
#include "platform/error.h"
#include "workbench/repository/store.h"

namespace qmrules::browser {
namespace {

using catalogue::MakeKey;
using platform::widgets::TreeNode;

// A front end of another process: everything as the one given, over an opening of the store of its own.
class OtherFrontEnd final : public platform::FrontEnd {
 public:
  OtherFrontEnd(platform::FrontEnd& frontEnd, platform::Repository& repository, std::string projectKey)
      : frontEnd_(frontEnd), repository_(repository), projectKey_(std::move(projectKey)) {}
  platform::Repository& Repository() override { return repository_; }
  std::unique_ptr<platform::Object> ProjectObject() override { return repository_.object(projectKey_); }
  platform::Options& ProjectOptions() override { return frontEnd_.ProjectOptions(); }
  platform::Options& GlobalOptions() override { return frontEnd_.GlobalOptions(); }
  std::string UserName() const override { return frontEnd_.UserName(); }
  std::string GetFerrowoodName(int number) const override { return frontEnd_.GetFerrowoodName(number); }
  std::string HelpFile() const override { return frontEnd_.HelpFile(); }

 private:
  platform::FrontEnd& frontEnd_;
  platform::Repository& repository_;
  std::string projectKey_;
};

// The fixture's own store is the other process: what is written there reaches the second window by the mending only.
class TreeMendTest : public BrowserTest {
 protected:
  TreeMendTest() {
    FillCommandWidgets(window, texts);
    fees = CreateSet(billing, "Fees");
    taxes = CreateSet(billing, "Taxes");
    CreateSet(billing, "Claims");
    late = CreateRule(fees, "Late fee");
    grace = CreateRule(fees, "Grace days");
    CreateRule(taxes, "Senior relief");
    here->TakeForeignChanges();
    windowObjects.LoadTree();
  }

  TreeNode& WindowNode(const std::string& key) {
    TreeNode* const node = window.tvObjects.Find(key);
    if (node == nullptr) throw std::out_of_range("no node has the key " + key);
    return *node;
  }
  void Open(std::int32_t function, std::int32_t set) {
    window.tvObjects.SetExpanded(WindowNode(catalogue::RuleSetNodeKey(function, set)), true);
  }
  std::string WindowTree() const { return TreeText(window.tvObjects); }
  void TakeAndMend() {
    const auto changes = here->TakeForeignChanges();
    if (changes.areTooMany) {
      mend.MendAll();
    } else {
      mend.Mend(changes.objects);
    }
  }

  const std::int32_t billing = store.AddFunction("Billing");
  std::int32_t fees = 0;
  std::int32_t taxes = 0;
  std::int32_t late = 0;
  std::int32_t grace = 0;

  std::unique_ptr<platform::Repository> here = workbench::repository::OpenStore(
      {.path = store.StorePath(), .extensionPath = "", .userName = "reader", .connect = {}}, store.Clock());
  OtherFrontEnd otherFrontEnd{store.FE(), *here, store.ProjectKey()};
  ControlWidgets window{texts};
  RecordingHost windowHost;
  BrowserServices windowServices{workspace, otherFrontEnd, progress, dialogs,    pointer, store.Clock(),
                                 texts,     globals,       commands, windowHost, window};
  SelectedKeys windowKeys;
  ObjectTree windowObjects{windowServices, windowKeys};
  SelectedOnly windowSelectedOnly{windowServices, windowObjects, windowKeys};
  RepositoryNotifications windowNotifications{windowServices, windowObjects, windowSelectedOnly};
  TreeMend mend{windowServices, windowObjects, windowSelectedOnly};
};

TEST_F(TreeMendTest, ChangedNamesShowWhereverTheObjectStands) {
  const auto claims = store.AddFunction("Claiming");
  Trigger(claims, fees);
  TakeAndMend();
  Open(billing, fees);
  Open(claims, fees);
  store.Put(MakeKey("RULESET", fees), "Name", platform::Value("Late payment"));
  store.Put(MakeKey("RULE", late), "RuleName", platform::Value("Late charge"));
  store.Put(MakeKey("BUSINESSFUNC", billing), "Name", platform::Value("Bill"));
  TakeAndMend();
  EXPECT_EQ(WindowTree(),
            "Bill\n"
            "  Late payment #1\n"
            "    Late charge #1\n"
            "    Grace days #2\n"
            "  Taxes #2\n"
            "    ...\n"
            "  Claims #3\n"
            "Claiming\n"
            "  Late payment #1\n"
            "    Late charge #1\n"
            "    Grace days #2\n");
}

TEST_F(TreeMendTest, ARuleThatMovedInSequenceKeepsItsCheckAndTheSelection) {
  Open(billing, fees);
  auto& first = WindowNode(catalogue::RuleNodeKey(billing, late));
  first.SetChecked(true);
  windowObjects.SelectAndShow(first);
  catalogue::SwapRules(repository, late, grace);
  TakeAndMend();
  EXPECT_EQ(WindowTree(),
            "Billing\n"
            "  Fees #1\n"
            "    Grace days #1\n"
            "    Late fee #2 [x]\n"
            "  Taxes #2\n"
            "    ...\n"
            "  Claims #3\n");
  auto& moved = WindowNode(catalogue::RuleNodeKey(billing, late));
  EXPECT_EQ(window.tvObjects.SelectedNode(), &moved);
  EXPECT_EQ(windowHost.CurrentNode(), &moved);
}

TEST_F(TreeMendTest, ARuleSetThatMovedIsClosedAndTakesTheSelectionFromItsRule) {
  Open(billing, fees);
  windowObjects.SelectAndShow(WindowNode(catalogue::RuleNodeKey(billing, late)));
  catalogue::SwapRuleSets(repository, billing, fees, taxes);
  TakeAndMend();
  EXPECT_EQ(WindowTree(),
            "Billing\n"
            "  Taxes #1\n"
            "    ...\n"
            "  Fees #2\n"
            "    ...\n"
            "  Claims #3\n");
  EXPECT_EQ(window.tvObjects.SelectedNode()->Text(), "Fees");
  EXPECT_EQ(windowHost.shown.back(), "Fees");
}

// By the time that the event is told, the call is gone, and with it what the event's own handler asks for.
TEST_F(TreeMendTest, ARuleSetWhoseCallWasDeletedLeavesItsFunction) {
  const auto call = catalogue::SplitKey(repository.FindObject("RULESETCALL", "newcall1")->Key()).id;
  repository.object(MakeKey("RULESETCALL", call))->Delete();
  TakeAndMend();
  EXPECT_EQ(WindowTree(),
            "Billing\n"
            "  Taxes #2\n"
            "    ...\n"
            "  Claims #3\n");
}

TEST_F(TreeMendTest, ARuleThatWentToAnotherOpenRuleSetStandsThere) {
  Open(billing, fees);
  Open(billing, taxes);
  repository.object(MakeKey("RULESET", fees))->UnLink("Has", MakeKey("RULE", late));
  repository.object(MakeKey("RULESET", taxes))->Link("Has", MakeKey("RULE", late));
  TakeAndMend();
  EXPECT_EQ(WindowTree(),
            "Billing\n"
            "  Fees #1\n"
            "    Grace days #2\n"
            "  Taxes #2\n"
            "    Late fee #1\n"
            "    Senior relief #1\n"
            "  Claims #3\n");
}

TEST_F(TreeMendTest, TheLastRuleTakesThePlaceholderOfAClosedRuleSetWithIt) {
  for (const auto rule : {late, grace}) repository.object(MakeKey("RULE", rule))->Delete();
  TakeAndMend();
  EXPECT_EQ(WindowTree(),
            "Billing\n"
            "  Fees #1\n"
            "  Taxes #2\n"
            "    ...\n"
            "  Claims #3\n");
}

TEST_F(TreeMendTest, AFunctionThatLeftTheProjectLeavesTheTree) {
  repository.object(MakeKey("BUSINESSFUNC", billing))->UnLink("BelongsTo", store.ProjectKey());
  TakeAndMend();
  EXPECT_EQ(WindowTree(), "");
}

TEST_F(TreeMendTest, SelectedOnlyKeepsHidingWhatItHides) {
  Open(billing, fees);
  WindowNode(catalogue::RuleNodeKey(billing, late)).SetChecked(true);
  windowSelectedOnly.TurnOn();
  store.Put(MakeKey("RULE", late), "RuleName", platform::Value("Late charge"));
  store.Put(MakeKey("RULE", grace), "RuleName", platform::Value("Days of grace"));
  TakeAndMend();
  EXPECT_EQ(WindowTree(),
            "Billing\n"
            "  Fees #1\n"
            "    Late charge #1 [x]\n");
}

TEST_F(TreeMendTest, AFailureWhileReadingLeavesTheTreeAsItWas) {
  Open(billing, fees);
  const std::string before = WindowTree();
  store.Put(MakeKey("RULE", late), "RuleName", platform::Value("Late charge"));
  auto changes = here->TakeForeignChanges().objects;
  changes.push_back("no key");
  EXPECT_THROW(mend.Mend(changes), platform::Error);
  EXPECT_EQ(WindowTree(), before);
}

TEST_F(TreeMendTest, AfterALargeImportTheWholeTreeIsInLine) {
  Open(billing, fees);
  const auto command = repository.BeginCommand("Import");
  for (int rule = 0; rule < 200; ++rule) CreateRule(fees, "Imported " + std::to_string(rule));
  const auto added = store.AddFunction("Settling");
  CreateSet(added, "Refunds");
  TakeAndMend();
  EXPECT_EQ(WindowNode(catalogue::RuleSetNodeKey(billing, fees)).ChildCount(), 202U);
  EXPECT_NE(window.tvObjects.Find(catalogue::FunctionNodeKey(added)), nullptr);
}

class RandomForeignChanges : public TreeMendTest, public testing::WithParamInterface<unsigned> {
 protected:
  std::size_t Below(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(random); }
  std::int32_t Any(const std::vector<std::int32_t>& ids) { return ids.empty() ? 0 : ids[Below(ids.size())]; }
  std::vector<std::int32_t> Standing(const std::string& entity) {
    std::vector<std::int32_t> ids;
    const auto fetch = catalogue::NewQuery(repository);
    fetch->SetRoot(fetch->AddObject(false, entity, ">ID"));
    for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) ids.push_back(catalogue::IDField(fetch->Row(), "ID"));
    return ids;
  }
  bool Triggers(std::int32_t function, std::int32_t set) {
    return catalogue::NeighbourRuleSet(repository, store.ProjectKey(), function, set, catalogue::Direction::Up) ||
           catalogue::NeighbourRuleSet(repository, store.ProjectKey(), function, set, catalogue::Direction::Down);
  }

  void Change() {
    const std::string name = std::to_string(1000 + ++names);  // new functions come last by name
    const auto functions = Standing("BUSINESSFUNC");
    const auto sets = Standing("RULESET");
    const auto rules = Standing("RULE");
    const std::int32_t function = Any(functions);
    const std::int32_t set = Any(sets);
    const std::int32_t rule = Any(rules);
    switch (Below(9)) {
      case 0:
        store.AddFunction("F" + name);
        break;
      case 1:
        CreateSet(function, "S" + name);
        break;
      case 2:
        if (set != 0) CreateRule(set, "R" + name);
        break;
      case 3:
        if (set != 0) store.Put(MakeKey("RULESET", set), "Name", platform::Value("S" + name));
        break;
      case 4:
        if (rule != 0) store.Put(MakeKey("RULE", rule), "RuleName", platform::Value("R" + name));
        break;
      case 5:
        if (rule != 0) store.Put(MakeKey("RULE", rule), "SeqNo", platform::Value(static_cast<int>(1 + Below(9))));
        break;
      case 6:
        if (const auto call = Any(Standing("RULESETCALL")); call != 0) {
          store.Put(MakeKey("RULESETCALL", call), "SeqNo", platform::Value(static_cast<int>(1 + Below(9))));
        }
        break;
      case 7:
        if (rule != 0) repository.object(MakeKey("RULE", rule))->Delete();
        break;
      default:
        if (const auto call = Any(Standing("RULESETCALL")); call != 0 && Below(3) == 0) {
          repository.object(MakeKey("RULESETCALL", call))->Delete();
        } else if (set != 0 && !Triggers(function, set)) {
          Trigger(function, set);
        }
        break;
    }
  }

  // The keys with what the tree shows of them, and where rules are open.
  static std::string Shown(const platform::widgets::TreeView& tree) {
    std::string text;
    for (const TreeNode* node = tree.First(); node != nullptr; node = node->NextInOrder()) {
      text += node->Key() + " " + node->Text() + " " + node->Tag() + "\n";
    }
    return text;
  }

  std::mt19937 random{GetParam()};
  int names = 0;
};

TEST_P(RandomForeignChanges, GiveTheTreeThatALoadWouldGive) {
  for (int round = 0; round < 12; ++round) {
    for (std::size_t change = 0; change <= Below(6); ++change) Change();
    TakeAndMend();
    EXPECT_EQ(windowHost.failures, std::vector<std::string>());

    ControlWidgets fresh{texts};
    FillCommandWidgets(fresh, texts);
    RecordingHost freshHost;
    BrowserServices freshServices{workspace, frontEnd, progress, dialogs,   pointer, store.Clock(),
                                  texts,     globals,  commands, freshHost, fresh};
    SelectedKeys freshKeys;
    ObjectTree freshObjects{freshServices, freshKeys};
    freshObjects.LoadTree();
    for (TreeNode* node = window.tvObjects.First(); node != nullptr; node = node->NextInOrder()) {
      const bool isRead = node->FirstChild() != nullptr && !HasPlaceholder(*node) && IsRuleSet(*node);
      TreeNode* const same = fresh.tvObjects.Find(node->Key());
      if (isRead && same != nullptr) fresh.tvObjects.SetExpanded(*same, true);
    }
    ASSERT_EQ(Shown(window.tvObjects), Shown(fresh.tvObjects)) << "round " << round;

    if (const auto set = Any(Standing("RULESET")); set != 0) {
      for (TreeNode* const node : windowObjects.Index().Occurrences("RULESET", set)) {
        window.tvObjects.SetExpanded(*node, true);
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomForeignChanges, testing::Range(1U, 25U));

}  // namespace
}  // namespace qmrules::browser
