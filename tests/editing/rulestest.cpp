#include "editing/rules.h"

#include "editing/extendedrules.h"
#include "platform/error.h"

namespace qmrules::editing {
namespace {

using catalogue::MakeKey;
using platform::MessageStyle;

class Rules : public ExtendedRules {
 protected:
  NewRule Wanted(const std::string& name) {
    NewRule wanted;
    wanted.ruleSetID = set;
    wanted.name = name;
    wanted.attributeSchema = schema.selectSingleNode(catalogue::kRuleAttributesPath);
    return wanted;
  }
  std::int32_t Make(const NewRule& wanted) { return std::get<Created>(CreateRule(context, wanted)).id; }
  std::string Of(std::int32_t rule, const char* attribute) { return Text("RULE", rule, attribute); }
};

TEST_F(Rules, ANewOneHasWhatWasTypedAndWhoMadeIt) {
  auto wanted = Wanted("Late fee");
  wanted.description = "After thirty days.";
  const auto rule = Make(wanted);
  EXPECT_EQ(Of(rule, "RuleName"), "Late fee");
  EXPECT_EQ(Of(rule, "Description"), "After thirty days.");
  EXPECT_EQ(Of(rule, "AssignedTo"), "analyst");
  EXPECT_EQ(Of(rule, "SeqNo"), "1");
  EXPECT_EQ(Of(rule, "SID"), MakeKey("RULESET", set));
  EXPECT_EQ(Of(rule, "Validated"), "2026-01-31 12:00:00");
}

TEST_F(Rules, ANewOneStandsInItsRuleSet) {
  const auto rule = Make(Wanted("Late fee"));
  const auto fetch = catalogue::NewQuery(repository);
  const auto member = fetch->AddObject(false, "RULE", "ID");
  const auto has = fetch->AddRelation("Has", false, "", member);
  fetch->SetRoot(fetch->AddObject(true, "RULESET", "", "ID=" + std::to_string(set), has));
  ASSERT_FALSE(fetch->Execute(store.ProjectKey()));
  EXPECT_EQ(catalogue::IDField(fetch->Row(), "ID"), rule);
}

TEST_F(Rules, ANewOneIsLoggedAsCreated) {
  EXPECT_EQ(Activities(Make(Wanted("Late fee"))), (std::vector<std::string>{"Created"}));
}

TEST_F(Rules, WithoutASegmentANewOneHasNoProgramAndIsValid) {
  const auto rule = Make(Wanted("Late fee"));
  EXPECT_EQ(Of(rule, "Program"), "");
  EXPECT_EQ(Of(rule, "FileName"), "");
  EXPECT_EQ(Of(rule, "Valid"), "Valid");
}

TEST_F(Rules, ANewOneTakesTheSegment) {
  auto wanted = Wanted("Late fee");
  wanted.segment = {"COBOL", "FEE", "cobol/FEE.cbl", 3, 4, "a\nb\n"};
  const auto rule = Make(wanted);
  EXPECT_EQ(Of(rule, "Model"), "COBOL");
  EXPECT_EQ(Of(rule, "Program"), "FEE");
  EXPECT_EQ(Of(rule, "FileName"), "cobol/FEE.cbl");
  EXPECT_EQ(Of(rule, "FromRow"), "3");
  EXPECT_EQ(Of(rule, "ToRow"), "4");
  EXPECT_EQ(Of(rule, "SourceText"), "a\nb\n");
}

TEST_F(Rules, ANewOneGetsTheDefaultsThatAreNotEmpty) {
  const auto rule = Make(Wanted("Late fee"));
  EXPECT_EQ(Of(rule, "Status"), "new");
  EXPECT_EQ(Of(rule, "Weight"), "5");
  EXPECT_TRUE(store.Get(MakeKey("RULE", rule), "Owner").IsAbsent()) << "an empty default leaves it unset";
  EXPECT_TRUE(store.Get(MakeKey("RULE", rule), "Audited").IsAbsent());
}

TEST_F(Rules, WithoutASchemaNothingIsDefaulted) {
  auto wanted = Wanted("Late fee");
  wanted.attributeSchema = {};
  EXPECT_EQ(Of(Make(wanted), "Status"), "");
}

TEST_F(Rules, ANewOneLandsDirectlyBehindTheOneThatIsNamed) {
  const auto first = Make(Wanted("First"));
  const auto last = Make(Wanted("Last"));
  auto wanted = Wanted("Between");
  wanted.afterRuleID = first;
  const auto between = Make(wanted);
  EXPECT_EQ(Of(first, "SeqNo"), "1");
  EXPECT_EQ(Of(between, "SeqNo"), "2");
  EXPECT_EQ(Of(last, "SeqNo"), "3");
}

TEST_F(Rules, TwoMayShareAName) {
  EXPECT_NE(Make(Wanted("Late fee")), Make(Wanted("Late fee")));
}

TEST_F(Rules, TheNameIsSafeButNotTrimmed) {
  auto wanted = Wanted(" Late\x01 ");
  wanted.description = "x\x0e";
  const auto outcome = CreateRule(context, wanted);
  const auto& created = std::get<Created>(outcome);
  EXPECT_EQ(created.name, " Late&#64999; ");
  EXPECT_EQ(Of(created.id, "RuleName"), " Late&#64999; ");
  EXPECT_EQ(created.description, "x}");
}

TEST_F(Rules, ANameOfBlanksIsRefused) {
  for (const char* name : {"", "   "}) {
    EXPECT_EQ(RefusalOf(CreateRule(context, Wanted(name))),
              (Notice{"Please, enter rule name.", MessageStyle::Exclamation}));
  }
  EXPECT_EQ(repository.CountObjects("RULE", {}), 0);
}

TEST_F(Rules, ARuleSetOfAnotherProjectIsRefused) {
  set = AddElsewhere("RULESET", "Abroad");
  EXPECT_EQ(RefusalOf(CreateRule(context, Wanted("Late fee"))),
            (Notice{"A new object can be created within the current project only.", MessageStyle::Exclamation}));
  EXPECT_EQ(repository.CountObjects("RULE", {}), 0);
}

TEST_F(Rules, AMissingRuleSetIsAnError) {
  set = 4711;
  EXPECT_THROW(static_cast<void>(CreateRule(context, Wanted("Late fee"))), platform::Error);
  EXPECT_EQ(repository.CountObjects("RULE", {}), 0);
}

TEST_F(Rules, AHalfWrittenOneIsNotTakenBack) {
  auto wanted = Wanted("Late fee");
  wanted.afterRuleID = 4711;
  EXPECT_THROW(static_cast<void>(CreateRule(context, wanted)), platform::Error);
  EXPECT_EQ(repository.CountObjects("RULE", {}), 1);
}

}  // namespace
}  // namespace qmrules::editing
