#include "catalogue/attributeschema.h"

#include <gtest/gtest.h>

#include "catalogue/collectionitems.h"
#include "platform/error.h"

namespace qmrules::catalogue {
namespace {

constexpr const char* kDocument = R"(<repstry><entities>
  <entity name="RULESET"><entityattrs><entityattr name="Owner" type="INTEGER" system="false"/></entityattrs></entity>
  <entity name="RULE"><entityattrs>
    <entityattr name="Origin" type="CHAR" length="9" system="true" default="catalogue"/>
    <entityattr name="Status" type="CHAR" length="8" system="false" default="new">
      <const value="new"/><const value="approved"/>
    </entityattr>
    <entityattr name="Weight" type="INTEGER" system="false" default=""/>
    <entityattr name="Audited" type="BOOLEAN" system="false"/>
    <entityattr name="Remark" type="LONGTEXT" system="false"/>
    <entityattr name="Free" type="CHAR" length="" system="false"/>
    <entityattr name="Odd" type="CHAR" length="many" system="false"/>
    <entityattr name="Say &quot;it's&quot;" type="INTEGER" system="false"/>
  </entityattrs></entity>
</entities></repstry>)";

class AttributeSchema : public testing::Test {
 protected:
  AttributeSchema() {
    document.loadXML(kDocument);
    rules = document.selectSingleNode(kRuleAttributesPath);
  }
  platform::XmlDocument document;
  platform::XmlElement rules;
};

TEST_F(AttributeSchema, AnAttributeThatIsNotDefinedTakesAnyValue) {
  EXPECT_TRUE(IsAttributeValueValid(document, "Nowhere", "1,5"));
}

TEST_F(AttributeSchema, AnIntegerIsANumberWithoutCommaAndPoint) {
  EXPECT_TRUE(IsAttributeValueValid(document, "Weight", "12"));
  EXPECT_TRUE(IsAttributeValueValid(document, "Weight", "-12"));
  EXPECT_TRUE(IsAttributeValueValid(document, "Weight", " 12 "));
  EXPECT_FALSE(IsAttributeValueValid(document, "Weight", "1,200"));
  EXPECT_FALSE(IsAttributeValueValid(document, "Weight", "1.5"));
  EXPECT_FALSE(IsAttributeValueValid(document, "Weight", "twelve"));
  EXPECT_FALSE(IsAttributeValueValid(document, "Weight", ""));
}

TEST_F(AttributeSchema, ABooleanIsTrueOrFalseInAnyCase) {
  EXPECT_TRUE(IsAttributeValueValid(document, "Audited", "true"));
  EXPECT_TRUE(IsAttributeValueValid(document, "Audited", "FALSE"));
  EXPECT_FALSE(IsAttributeValueValid(document, "Audited", "1"));
  EXPECT_FALSE(IsAttributeValueValid(document, "Audited", "yes"));
  EXPECT_FALSE(IsAttributeValueValid(document, "Audited", ""));
}

TEST_F(AttributeSchema, ACharIsNotLongerThanItsLength) {
  EXPECT_TRUE(IsAttributeValueValid(document, "Status", "12345678"));
  EXPECT_FALSE(IsAttributeValueValid(document, "Status", "123456789"));
  EXPECT_TRUE(IsAttributeValueValid(document, "Status", "äöüÄÖÜßé")) << "lengths are characters, not bytes";
  EXPECT_TRUE(IsAttributeValueValid(document, "Status", ""));
}

TEST_F(AttributeSchema, ACharWithoutALengthHasNoLimit) {
  EXPECT_TRUE(IsAttributeValueValid(document, "Free", std::string(5000, 'x')));
}

TEST_F(AttributeSchema, ALongTextTakesAnyValue) {
  EXPECT_TRUE(IsAttributeValueValid(document, "Remark", std::string(100000, 'x')));
}

TEST_F(AttributeSchema, ALengthThatIsNoNumberIsReported) {
  try {
    EXPECT_FALSE(IsAttributeValueValid(document, "Odd", "x"));
    FAIL();
  } catch (const platform::Error& error) {
    EXPECT_STREQ(
        error.what(),
        "The schema document gives the attribute Odd the length \"many\", which is not a whole number. Correct "
        "the attribute's definition.");
  }
}

TEST_F(AttributeSchema, AnAttributeIsFoundWhateverQuotesItsNameHas) {
  EXPECT_FALSE(IsAttributeValueValid(document, "Say \"it's\"", "x"));
  EXPECT_TRUE(IsAttributeValueValid(document, "' or '1'='1", "1,5"));
}

TEST_F(AttributeSchema, FindsADefinitionAmongTheRulesOnly) {
  EXPECT_EQ(AttributeElement(rules, "Weight").AttributeOr("type", ""), "INTEGER");
  EXPECT_FALSE(AttributeElement(rules, "Owner"));
}

TEST_F(AttributeSchema, AdmissibleValuesAreTheChildrenThatHaveOne) {
  EXPECT_EQ(AdmissibleValues(AttributeElement(rules, "Status")), (std::vector<std::string>{"new", "approved"}));
  EXPECT_TRUE(AdmissibleValues(AttributeElement(rules, "Weight")).empty());
  EXPECT_TRUE(AdmissibleValues({}).empty());
}

TEST_F(AttributeSchema, DefaultsAreThoseThatAreNotEmptyInDocumentOrder) {
  EXPECT_EQ(DefaultsOfNewRule(rules), (std::vector<AttributeDefault>{{"Origin", "catalogue"}, {"Status", "new"}}));
}

TEST_F(AttributeSchema, TheShownListHoldsTheFixedItemsAndTheSitesOwn) {
  const auto lists = BuildAttributeLists(rules);
  EXPECT_EQ(Items(lists.shown), (std::vector<std::string>{"RuleName", "Description", "BusinessDescription", "Program",
                                                          "AssignedTo", "Valid", "Validated", "Status", "Weight",
                                                          "Audited", "Remark", "Free", "Odd", "Say \"it's\""}));
  ASSERT_NE(lists.shown.Find("assignedto"), nullptr) << "each item stands under its own name";
}

TEST_F(AttributeSchema, TheEditableListLacksWhatTheSystemKeeps) {
  const auto lists = BuildAttributeLists(rules);
  EXPECT_EQ(Items(lists.editable),
            (std::vector<std::string>{"RuleName", "Description", "BusinessDescription", "AssignedTo", "Status",
                                      "Weight", "Audited", "Remark", "Free", "Odd", "Say \"it's\""}));
  EXPECT_FALSE(lists.editable.Contains("Valid"));
  EXPECT_FALSE(lists.shown.Contains("Origin")) << "an attribute of the product";
}

struct NumberCase {
  const char* text;
  bool isNumeric;
};

class Numeric : public testing::TestWithParam<NumberCase> {};

TEST_P(Numeric, IsANumberAsAReaderWritesIt) {
  EXPECT_EQ(IsNumeric(GetParam().text), GetParam().isNumeric) << '"' << GetParam().text << '"';
}

INSTANTIATE_TEST_SUITE_P(Texts, Numeric,
                         testing::Values(NumberCase{"1", true}, NumberCase{"-1", true}, NumberCase{"+1", true},
                                         NumberCase{" 1 ", true}, NumberCase{"1,000", true},
                                         NumberCase{"1,000.25", true}, NumberCase{".5", true}, NumberCase{"5.", true},
                                         NumberCase{"1e5", true}, NumberCase{"1E-5", true}, NumberCase{"1d2", true},
                                         NumberCase{"", false}, NumberCase{" ", false}, NumberCase{"-", false},
                                         NumberCase{".", false}, NumberCase{"1A", false}, NumberCase{"A1", false},
                                         NumberCase{"1 2", false}, NumberCase{"1e", false}, NumberCase{"1e+", false},
                                         NumberCase{"--1", false}, NumberCase{",1", false}, NumberCase{"1.2.3", false},
                                         NumberCase{"1.2,3", false}, NumberCase{"e5", false}));

}  // namespace
}  // namespace qmrules::catalogue
