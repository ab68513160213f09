#include "editing/rulesets.h"

#include "editing/editingtest.h"
#include "platform/error.h"

namespace qmrules::editing {
namespace {

using catalogue::MakeKey;
using platform::MessageStyle;

class RuleSets : public EditingTest {
 protected:
  void ExpectNothingMade() {
    EXPECT_EQ(repository.CountObjects("RULESET", {}), sets_);
    EXPECT_EQ(repository.CountObjects("RULESETCALL", {}), calls_);
  }
  void Remember() {
    sets_ = repository.CountObjects("RULESET", {});
    calls_ = repository.CountObjects("RULESETCALL", {});
  }

  std::int32_t function = store.AddFunction("Billing");

 private:
  std::int32_t sets_ = 0;
  std::int32_t calls_ = 0;
};

TEST_F(RuleSets, ANewOneStandsInTheProjectUnderItsFunction) {
  const auto outcome = CreateRuleSet(context, {function, "Fees", "All fees.", 0});
  const auto& created = std::get<CreatedRuleSet>(outcome);
  EXPECT_EQ(created.name, "Fees");
  EXPECT_EQ(Text("RULESET", created.id, "Description"), "All fees.");
  EXPECT_TRUE(repository.object(MakeKey("RULESET", created.id))->BelongsToProject(store.ProjectKey()));
  EXPECT_EQ(Text("RULESETCALL", created.callID, "SeqNo"), "1");
  EXPECT_EQ(Text("RULESETCALL", created.callID, "SID"), MakeKey("BUSINESSFUNC", function));
}

TEST_F(RuleSets, TheCallLeadsFromTheFunctionToTheRuleSet) {
  const auto outcome = CreateRuleSet(context, {function, "Fees", "", 0});
  const auto fetch = catalogue::NewQuery(repository);
  const auto set = fetch->AddObject(true, "RULESET", "ID:SetID");
  const auto refers = fetch->AddRelation("Refers", false, "", set);
  const auto call = fetch->AddObject(false, "RULESETCALL", "ID:CallID", {}, refers);
  const auto triggers = fetch->AddRelation("Triggers", false, "", call);
  fetch->SetRoot(fetch->AddObject(true, "BUSINESSFUNC", "ID:FuncID", {}, triggers));
  ASSERT_FALSE(fetch->Execute(store.ProjectKey()));
  const auto& created = std::get<CreatedRuleSet>(outcome);
  EXPECT_EQ(catalogue::IDField(fetch->Row(), "FuncID"), function);
  EXPECT_EQ(catalogue::IDField(fetch->Row(), "CallID"), created.callID);
  EXPECT_EQ(catalogue::IDField(fetch->Row(), "SetID"), created.id);
  fetch->MoveNext();
  EXPECT_TRUE(fetch->Eof());
}

TEST_F(RuleSets, ANewOneGoesBehindTheOneThatIsNamed) {
  const auto first = store.AddRuleSet("First");
  store.AddCall(function, first, 1);
  const auto secondCall = store.AddCall(function, store.AddRuleSet("Second"), 2);
  const auto outcome = CreateRuleSet(context, {function, "Fees", "", first});
  EXPECT_EQ(Text("RULESETCALL", std::get<CreatedRuleSet>(outcome).callID, "SeqNo"), "2");
  EXPECT_EQ(Text("RULESETCALL", secondCall, "SeqNo"), "3");
}

TEST_F(RuleSets, ANewOneGoesToTheEndWithoutANeighbour) {
  store.AddCall(function, store.AddRuleSet("First"), 4);
  const auto outcome = CreateRuleSet(context, {function, "Fees", "", 0});
  EXPECT_EQ(Text("RULESETCALL", std::get<CreatedRuleSet>(outcome).callID, "SeqNo"), "5");
}

TEST_F(RuleSets, ANeighbourOfAnotherFunctionCountsForNothing) {
  const auto stranger = store.AddRuleSet("Stranger");
  store.AddCall(store.AddFunction("Claims"), stranger, 1);
  store.AddCall(function, store.AddRuleSet("First"), 1);
  const auto outcome = CreateRuleSet(context, {function, "Fees", "", stranger});
  EXPECT_EQ(Text("RULESETCALL", std::get<CreatedRuleSet>(outcome).callID, "SeqNo"), "2");
}

TEST_F(RuleSets, TextsPassSafeTextAndKeepTheirBlanks) {
  const auto outcome = CreateRuleSet(context, {function,
                                               " Fe\x0f"
                                               "es ",
                                               "a\x01", 0});
  const auto& created = std::get<CreatedRuleSet>(outcome);
  EXPECT_EQ(Text("RULESET", created.id, "Name"), " Fe{es ");
  EXPECT_EQ(Text("RULESET", created.id, "Description"), "a&#64999;");
}

TEST_F(RuleSets, ANameOfBlanksIsRefused) {
  Remember();
  EXPECT_EQ(RefusalOf(CreateRuleSet(context, {function, "  ", "", 0})),
            (Notice{"Please, enter rule set name.", MessageStyle::Exclamation}));
  ExpectNothingMade();
}

TEST_F(RuleSets, AFunctionOfAnotherProjectIsRefused) {
  const auto elsewhere = AddElsewhere("BUSINESSFUNC", "Abroad");
  Remember();
  EXPECT_EQ(RefusalOf(CreateRuleSet(context, {elsewhere, "Fees", "", 0})),
            (Notice{"A new object can be created within the current project only.", MessageStyle::Exclamation}));
  ExpectNothingMade();
}

TEST_F(RuleSets, AMissingFunctionIsAnError) {
  EXPECT_THROW(static_cast<void>(CreateRuleSet(context, {4711, "Fees", "", 0})), platform::Error);
  EXPECT_EQ(repository.CountObjects("RULESET", {}), 0);
}

TEST_F(RuleSets, ANameThatIsTakenInAnotherProjectIsRefused) {
  AddElsewhere("RULESET", "Fees");
  Remember();
  EXPECT_EQ(RefusalOf(CreateRuleSet(context, {function, "Fees", "", 0})),
            (Notice{"Fees rule set already exists in another project.", MessageStyle::Exclamation}));
  ExpectNothingMade();
}

TEST_F(RuleSets, ANameThatIsTakenInTheProjectIsAQuestion) {
  const auto standing = store.AddRuleSet("Fees");
  Remember();
  const auto outcome = CreateRuleSet(context, {function, "Fees", "Typed", 0});
  const auto& question = std::get<RuleSetQuestion>(outcome);
  EXPECT_EQ(question.id, standing);
  EXPECT_EQ(question.question, (Notice{"Fees rule set already exists.\r\nContinue?", MessageStyle::QuestionOkCancel}));
  ExpectNothingMade();
  EXPECT_EQ(Text("RULESET", standing, "Description"), "") << "nothing is written before the answer";
}

TEST_F(RuleSets, AnswerCancelGivesTheExistingOneTheTypedDescriptionAndNoCall) {
  const auto standing = store.AddRuleSet("Fees");
  UseExistingRuleSet(context, standing, "Typed\x01");
  EXPECT_EQ(Text("RULESET", standing, "Description"), "Typed&#64999;");
  EXPECT_EQ(repository.CountObjects("RULESETCALL", {}), 0);
}

TEST_F(RuleSets, TheSameDescriptionIsNotWrittenAgain) {
  const auto standing = store.AddRuleSet("Fees");
  store.Put(MakeKey("RULESET", standing), "Description", "Same");
  const std::string modified = Text("RULESET", standing, "Modified");
  store.Clock().Set(platform::Timestamp{store.Clock().Now().seconds + 60});
  UseExistingRuleSet(context, standing, "Same");
  EXPECT_EQ(Text("RULESET", standing, "Modified"), modified);
}

TEST_F(RuleSets, TheDefaultOneUnderAnotherFunctionIsRefused) {
  Remember();
  EXPECT_EQ(RefusalOf(CreateRuleSet(context, {function, "Homeless Rules", "", 0})),
            (Notice{"Homeless Rules rule set cannot be created outside of Homeless Function business function.",
                    MessageStyle::Exclamation}));
  ExpectNothingMade();
}

class DefaultRuleSet : public RuleSets {
 protected:
  std::int32_t home = store.AddFunction("Homeless Function");
};

TEST_F(DefaultRuleSet, IsMadeUnderTheDefaultFunction) {
  const auto outcome = CreateRuleSet(context, {home, "Homeless Rules", "Any", 0});
  const auto& created = std::get<CreatedRuleSet>(outcome);
  EXPECT_EQ(Text("RULESET", created.id, "Description"), "Any");
  EXPECT_EQ(Text("RULESETCALL", created.callID, "SeqNo"), "1");
}

TEST_F(DefaultRuleSet, ThatStandsInTheProjectIsAcceptedWithTheTypedDescriptionAndNoCall) {
  const auto standing = store.AddRuleSet("Homeless Rules");
  const auto outcome = CreateRuleSet(context, {home, "Homeless Rules", "Typed", 0});
  const auto& existing = std::get<ExistingRuleSet>(outcome);
  EXPECT_EQ(existing.id, standing);
  EXPECT_TRUE(existing.accepted);
  EXPECT_EQ(existing.notice, (Notice{"Homeless Rules rule set already exists.", MessageStyle::Information}));
  EXPECT_EQ(Text("RULESET", standing, "Description"), "Typed");
  EXPECT_EQ(repository.CountObjects("RULESETCALL", {}), 0);
}

TEST_F(DefaultRuleSet, OfAnotherProjectTakesTheTypedDescriptionAndIsNotAccepted) {
  const auto elsewhere = AddElsewhere("RULESET", "Homeless Rules");
  const auto outcome = CreateRuleSet(context, {home, "Homeless Rules", "Typed", 0});
  const auto& existing = std::get<ExistingRuleSet>(outcome);
  EXPECT_EQ(existing.id, elsewhere);
  EXPECT_FALSE(existing.accepted);
  EXPECT_EQ(existing.notice,
            (Notice{"Homeless Rules rule set already exists.\r\nThe object must belong to the current project.",
                    MessageStyle::Exclamation}));
  EXPECT_EQ(Text("RULESET", elsewhere, "Description"), "Typed");
  EXPECT_EQ(repository.CountObjects("RULESETCALL", {}), 0);
}

}  // namespace
}  // namespace qmrules::editing
