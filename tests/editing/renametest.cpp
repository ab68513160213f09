#include "editing/editingtest.h"
#include "editing/rules.h"
#include "platform/error.h"

namespace qmrules::editing {
namespace {

using catalogue::MakeKey;
using platform::MessageStyle;

class Renaming : public EditingTest {
 protected:
  std::int32_t function = store.AddFunction("Billing");
  std::int32_t otherFunction = store.AddFunction("Claims");
  std::int32_t set = store.AddRuleSet("Fees");
  std::int32_t otherSet = store.AddRuleSet("Taxes");
  std::int32_t rule = store.AddRule(set, "Late fee", 1);
  std::int32_t call = store.AddCall(function, set, 1);
  std::int32_t otherCall = store.AddCall(otherFunction, set, 1);
  std::int32_t strangersCall = store.AddCall(otherFunction, otherSet, 2);

  std::string CallName(std::int32_t id) { return Text("RULESETCALL", id, "Name"); }
};

TEST_F(Renaming, ARulesVisibleNameChangesAndIsLogged) {
  const std::string internal = Text("RULE", rule, "Name");
  EXPECT_EQ(std::get<Changed>(Rename(context, MakeKey("RULE", rule), "Early fee")).value, "Early fee");
  EXPECT_EQ(Text("RULE", rule, "RuleName"), "Early fee");
  EXPECT_EQ(Text("RULE", rule, "Name"), internal);
  EXPECT_EQ(Activities(rule), (std::vector<std::string>{"Name changed to Early fee"}));
}

TEST_F(Renaming, ANameOfBlanksIsRefused) {
  for (const char* name : {"", " ", "    "}) {
    EXPECT_EQ(RefusalOf(Rename(context, MakeKey("RULE", rule), name)),
              (Notice{"Name cannot be empty.", MessageStyle::Exclamation}));
  }
  EXPECT_EQ(Text("RULE", rule, "RuleName"), "Late fee");
  EXPECT_TRUE(Activities(rule).empty());
}

TEST_F(Renaming, TheSameNameWritesAndLogsNothing) {
  const std::string name = CallName(call);
  EXPECT_TRUE(std::holds_alternative<Unchanged>(Rename(context, MakeKey("RULE", rule), "Late fee")));
  EXPECT_TRUE(std::holds_alternative<Unchanged>(Rename(context, MakeKey("RULESET", set), "Fees")));
  EXPECT_TRUE(Activities(rule).empty());
  EXPECT_EQ(CallName(call), name);
}

TEST_F(Renaming, TheNamePassesSafeTextAndKeepsItsBlanks) {
  EXPECT_EQ(std::get<Changed>(Rename(context, MakeKey("RULE", rule), " a\x01 ")).value, " a&#64999; ");
}

TEST_F(Renaming, ARuleSetGivesEveryCallOnItAFreshName) {
  const std::vector<std::string> before{CallName(call), CallName(otherCall), CallName(strangersCall)};
  EXPECT_EQ(std::get<Changed>(Rename(context, MakeKey("RULESET", set), "Charges")).value, "Charges");
  EXPECT_EQ(Text("RULESET", set, "Name"), "Charges");
  EXPECT_NE(CallName(call), before[0]);
  EXPECT_NE(CallName(otherCall), before[1]);
  EXPECT_NE(CallName(call), CallName(otherCall));
  EXPECT_EQ(CallName(strangersCall), before[2]);
}

TEST_F(Renaming, AFunctionGivesEveryCallOfItsOwnAFreshName) {
  const std::vector<std::string> before{CallName(call), CallName(otherCall), CallName(strangersCall)};
  Rename(context, MakeKey("BUSINESSFUNC", otherFunction), "Settlement");
  EXPECT_EQ(Text("BUSINESSFUNC", otherFunction, "Name"), "Settlement");
  EXPECT_EQ(CallName(call), before[0]);
  EXPECT_NE(CallName(otherCall), before[1]);
  EXPECT_NE(CallName(strangersCall), before[2]);
}

TEST_F(Renaming, FunctionsAndRuleSetsAreNotLogged) {
  Rename(context, MakeKey("BUSINESSFUNC", function), "Invoices");
  Rename(context, MakeKey("RULESET", set), "Charges");
  EXPECT_EQ(repository.CountObjects("RULELOG", {}), 0);
}

TEST_F(Renaming, ATakenNameIsAnErrorAndChangesNothing) {
  const std::string name = CallName(call);
  EXPECT_THROW(Rename(context, MakeKey("RULESET", set), "Taxes"), platform::Error);
  EXPECT_EQ(Text("RULESET", set, "Name"), "Fees");
  EXPECT_EQ(CallName(call), name);
}

TEST_F(Renaming, OtherObjectsAreRefused) {
  try {
    Rename(context, MakeKey("RULESETCALL", call), "x");
    FAIL();
  } catch (const platform::Error& error) {
    EXPECT_EQ(error.what(),
              MakeKey("RULESETCALL", call) + " is neither a business function nor a rule set nor a rule.");
  }
}

}  // namespace
}  // namespace qmrules::editing
