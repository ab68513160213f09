#include "editing/extendedrules.h"
#include "editing/rules.h"
#include "platform/error.h"

namespace qmrules::editing {
namespace {

using catalogue::MakeKey;
using platform::MessageStyle;

class RuleAttribute : public ExtendedRules {
 protected:
  ChangeOutcome Set(std::string_view attribute, std::string_view value) {
    return SetRuleAttribute(context, {schema, lists.editable}, rule, {attribute, value});
  }
  std::string Of(const char* attribute) { return Text("RULE", rule, attribute); }
  void ExpectRefused(std::string_view attribute, std::string_view value) {
    EXPECT_EQ(RefusalOf(Set(attribute, value)),
              (Notice{"The value you entered is not admissible for this attribute.", MessageStyle::Exclamation}))
        << attribute << " = " << value;
    EXPECT_TRUE(Activities(rule).empty());
  }
  std::string FailureOf(std::string_view attribute) {
    try {
      return std::holds_alternative<Changed>(Set(attribute, "x")) ? "changed" : "not changed";
    } catch (const platform::Error& error) {
      return error.what();
    }
  }

  std::int32_t rule = store.AddRule(set, "Late fee", 1);
};

TEST_F(RuleAttribute, AChangeIsStoredAndLoggedByTheCaption) {
  const auto outcome = Set("Description", "After thirty days.");
  EXPECT_EQ(std::get<Changed>(outcome).value, "After thirty days.");
  EXPECT_EQ(Of("Description"), "After thirty days.");
  EXPECT_EQ(Activities(rule), (std::vector<std::string>{"Technical Description changed to After thirty days."}));
}

TEST_F(RuleAttribute, TheSitesOwnIsLoggedByItsOwnCaption) {
  Set("Owner", "Sales");
  EXPECT_EQ(Of("Owner"), "Sales");
  EXPECT_EQ(Activities(rule), (std::vector<std::string>{"Business Owner changed to Sales"}));
}

TEST_F(RuleAttribute, IsNamedInAnyCase) {
  Set("businessdescription", "For all.");
  EXPECT_EQ(Of("BusinessDescription"), "For all.");
}

TEST_F(RuleAttribute, TheSameTextWritesAndLogsNothing) {
  Set("Description", "Same");
  EXPECT_TRUE(std::holds_alternative<Unchanged>(Set("Description", "Same")));
  EXPECT_EQ(Activities(rule).size(), 1U);
}

TEST_F(RuleAttribute, AnUnsetOneWithAnEmptyTextIsUnchanged) {
  EXPECT_TRUE(std::holds_alternative<Unchanged>(Set("Remark", "")));
}

TEST_F(RuleAttribute, ATextCanBeEmptied) {
  Set("Owner", "Sales");
  EXPECT_EQ(std::get<Changed>(Set("Owner", "")).value, "");
  EXPECT_EQ(Of("Owner"), "");
  EXPECT_EQ(Activities(rule).back(), "Business Owner changed to ");
}

TEST_F(RuleAttribute, ALongDescriptionIsLoggedUpTo255Characters) {
  Set("Description", std::string(255, 'x'));
  Set("Description", std::string(256, 'y'));
  EXPECT_EQ(Activities(rule),
            (std::vector<std::string>{"Technical Description changed to " + std::string(255, 'x'),
                                      "Technical Description changed to " + std::string(255, 'y') + "..."}));
  EXPECT_EQ(Of("Description"), std::string(256, 'y'));
}

TEST_F(RuleAttribute, TextsPassSafeText) {
  EXPECT_EQ(std::get<Changed>(Set("Remark",
                                  "a\x01"
                                  "b"))
                .value,
            "a&#64999;b");
  EXPECT_EQ(Of("Remark"), "a&#64999;b");
  EXPECT_EQ(Activities(rule), (std::vector<std::string>{"Remark changed to a&#64999;b"}));
}

TEST_F(RuleAttribute, AValueThatTheSchemaDoesNotAdmitIsRefused) {
  ExpectRefused("Weight", "heavy");
  ExpectRefused("Weight", "1.5");
  ExpectRefused("Owner", "123456789");
  EXPECT_EQ(Of("Weight"), "");
}

TEST_F(RuleAttribute, ANumberIsStored) {
  Set("Weight", "12");
  EXPECT_EQ(Of("Weight"), "12");
  EXPECT_EQ(Activities(rule), (std::vector<std::string>{"Weight changed to 12"}));
}

TEST_F(RuleAttribute, AChoiceTakesItsOwnValuesOnly) {
  Set("Status", "approved");
  EXPECT_EQ(Of("Status"), "approved");
  EXPECT_EQ(RefusalOf(Set("Status", "retired")).text, "The value you entered is not admissible for this attribute.");
  EXPECT_EQ(Of("Status"), "approved");
}

TEST_F(RuleAttribute, ABooleanIsAChoiceOfTwo) {
  ExpectRefused("Audited", "yes");
  Set("Audited", "true");
  EXPECT_EQ(Of("Audited"), "true");
  EXPECT_EQ(Activities(rule), (std::vector<std::string>{"Audited changed to true"}));
}

TEST_F(RuleAttribute, AnUnsetBooleanCountsAsFalse) {
  EXPECT_TRUE(std::holds_alternative<Unchanged>(Set("Audited", "false")));
}

TEST_F(RuleAttribute, ADescriptionTakesAnyText) {
  platform::XmlDocument strict;
  strict.loadXML(
      "<entities><entity name='RULE'><entityattrs><entityattr name='Description' type='CHAR' length='3' "
      "system='true'/></entityattrs></entity></entities>");
  const auto outcome = SetRuleAttribute(context, {strict, lists.editable}, rule, {"Description", "Longer than three"});
  EXPECT_TRUE(std::holds_alternative<Changed>(outcome));
}

TEST_F(RuleAttribute, WhatTheSystemKeepsCannotBeChanged) {
  const std::string rest = " of " + MakeKey("RULE", rule) +
                           " cannot be changed. These can: RuleName, Description, BusinessDescription, AssignedTo, "
                           "Status, Weight, Audited, Remark, Owner.";
  for (const char* attribute : {"Valid", "Validated", "Program", "FileName", "SeqNo", "SID", "Nothing"}) {
    EXPECT_EQ(FailureOf(attribute), std::string("The attribute ").append(attribute).append(rest));
  }
}

TEST_F(RuleAttribute, TheRuleNameGoesByRename) {
  EXPECT_EQ(std::get<Changed>(Set("RuleName", "Early fee")).value, "Early fee");
  EXPECT_EQ(Activities(rule), (std::vector<std::string>{"Name changed to Early fee"}));
  EXPECT_EQ(RefusalOf(Set("RuleName", " ")).text, "Name cannot be empty.");
}

class ObjectAttribute : public ExtendedRules {
 protected:
  ChangeOutcome Set(const std::string& key, std::string_view attribute, std::string_view value) {
    return SetObjectAttribute(context, key, {attribute, value});
  }
  std::string FailureOf(const std::string& key, std::string_view attribute) {
    try {
      return std::holds_alternative<Changed>(Set(key, attribute, "x")) ? "changed" : "not changed";
    } catch (const platform::Error& error) {
      return error.what();
    }
  }
};

TEST_F(ObjectAttribute, DescriptionsOfFunctionsAndRuleSetsAreStoredAndNotLogged) {
  Set(MakeKey("BUSINESSFUNC", function), "Description", "All bills.");
  Set(MakeKey("BUSINESSFUNC", function), "businessarea", "Sales\x0f");
  Set(MakeKey("RULESET", set), "Description", "All fees.");
  EXPECT_EQ(Text("BUSINESSFUNC", function, "Description"), "All bills.");
  EXPECT_EQ(Text("BUSINESSFUNC", function, "BusinessArea"), "Sales{");
  EXPECT_EQ(Text("RULESET", set, "Description"), "All fees.");
  EXPECT_EQ(repository.CountObjects("RULELOG", {}), 0);
}

TEST_F(ObjectAttribute, TheSameTextWritesNothing) {
  EXPECT_TRUE(std::holds_alternative<Unchanged>(Set(MakeKey("RULESET", set), "Description", "")));
}

TEST_F(ObjectAttribute, TheNameGoesByRename) {
  EXPECT_EQ(std::get<Changed>(Set(MakeKey("RULESET", set), "Name", "Charges")).value, "Charges");
  EXPECT_EQ(RefusalOf(Set(MakeKey("RULESET", set), "Name", "")).text, "Name cannot be empty.");
}

TEST_F(ObjectAttribute, AnythingElseIsNamed) {
  const std::string ruleSet = MakeKey("RULESET", set);
  const std::string businessFunction = MakeKey("BUSINESSFUNC", function);
  EXPECT_EQ(FailureOf(ruleSet, "BusinessArea"), "RULESET has no attribute BusinessArea.");
  EXPECT_EQ(FailureOf(ruleSet, "SID"),
            "The attribute SID of " + ruleSet + " cannot be changed. These can: Name, Description.");
  EXPECT_EQ(FailureOf(businessFunction, "Created"),
            "The attribute Created of " + businessFunction +
                " cannot be changed. These can: Name, Description, BusinessArea.");
  const std::string rule = MakeKey("RULE", store.AddRule(set, "Late fee", 1));
  EXPECT_EQ(FailureOf(rule, "Description"), rule + " is neither a business function nor a rule set.");
}

}  // namespace
}  // namespace qmrules::editing
