#include "workbench/repository/condition.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/error.h"
#include "platform/xml.h"
#include "support/errortext.h"

namespace qmrules::workbench::repository {
namespace {

ConditionObject Parse(std::string_view xml) {
  platform::XmlDocument document;
  document.loadXML(xml);
  return ParseCondition(document.documentElement());
}

// A document on RULE with this content of its element `cond`.
std::string WithCond(std::string_view cond) {
  return "<object><objecttype><type name=\"RULE\"/></objecttype><cond>" + std::string(cond) + "</cond></object>";
}

// Writes a condition as nested calls.
struct ConditionDescriber {
  static std::string Mark(bool isNegated) { return isNegated ? "not " : ""; }

  std::string operator()(const ConditionTest& test) const {
    static constexpr const char* kNames[] = {"equal", "less", "more", "like", "in"};
    std::string text = Mark(test.isNegated) + kNames[static_cast<int>(test.op)] + " " + test.name + " ";
    if (test.op != ConditionOperator::In) return text + "[" + test.arg + "]";
    for (const std::string& item : test.items) text += "[" + item + "]";
    return text;
  }
  std::string operator()(const ConditionAnd& all) const {
    return Mark(all.isNegated) + "and(" + Join(all.children) + ")";
  }
  std::string operator()(const ConditionOr& either) const {
    return Mark(either.isNegated) + "or(" + Join(either.children) + ")";
  }
  std::string operator()(const ConditionRelated& related) const {
    const auto& condition = related.object->condition;
    return Mark(related.isNegated) + "related(" + related.relation + " " + related.object->entity +
           (condition ? ": " + std::visit(*this, condition->node) : "") + ")";
  }

  std::string Join(const std::vector<ConditionNode>& children) const {
    std::string text;
    for (const ConditionNode& child : children) text += (text.empty() ? "" : ", ") + std::visit(*this, child.node);
    return text;
  }
};

// The condition of a document with this content of `cond`.
std::string ConditionTree(std::string_view cond) {
  const ConditionObject object = Parse(WithCond(cond));
  return object.condition ? std::visit(ConditionDescriber(), object.condition->node) : "none";
}

// The whole text of the error that reading the document ends with; "(no error)" when it ends with none.
std::string ConditionError(std::string_view xml) {
  return test::ErrorText([&] { Parse(xml); });
}

std::string ErrorOfCond(std::string_view cond) {
  return ConditionError(WithCond(cond));
}

std::string Attr(std::string_view name, std::string_view op, std::string_view arg, std::string_view more = "") {
  return "<attr name=\"" + std::string(name) + "\" op=\"" + std::string(op) + "\" arg=\"" + std::string(arg) + "\" " +
         std::string(more) + "/>";
}

std::string Related(std::string_view relation, std::string_view entity, std::string_view cond) {
  return "<related><reltype><rel name=\"" + std::string(relation) + "\"/></reltype><object><objecttype><type name=\"" +
         std::string(entity) + "\"/></objecttype><cond>" + std::string(cond) + "</cond></object></related>";
}

std::string Nested(std::string_view opening, int times, std::string_view core, std::string_view closing) {
  std::string text;
  for (int i = 0; i < times; ++i) text += opening;
  text += core;
  for (int i = 0; i < times; ++i) text += closing;
  return text;
}

TEST(Condition, StartingDocumentDeliversIDAndSequenceWithoutACondition) {
  const ConditionObject object = Parse(
      "<object><objecttype><type name=\"RULE\"/></objecttype><fetchid as=\"RuleID\"/>"
      "<fetchattr name=\"SeqNo\" as=\"RuleSeqNo\" order=\"asc\"/><cond/></object>");
  EXPECT_EQ(object.entity, "RULE");
  EXPECT_EQ(object.fetchID, "RuleID");
  EXPECT_EQ(object.attributes, (std::vector<ConditionAttribute>{{"SeqNo", "RuleSeqNo", Sort::Ascending}}));
  EXPECT_FALSE(object.condition.has_value());
}

TEST(Condition, AliasOrderAndCondMayBeAbsent) {
  const ConditionObject object = Parse(
      "<object><fetchattr name=\"A\"/><fetchattr name=\"B\" order=\"desc\"/><fetchid/>"
      "<objecttype><type name=\"RULE\"/></objecttype></object>");
  EXPECT_EQ(object.fetchID, "ID");
  EXPECT_EQ(object.attributes, (std::vector<ConditionAttribute>{{"A", "A", Sort::None}, {"B", "B", Sort::Descending}}));
  EXPECT_FALSE(object.condition.has_value());
}

TEST(Condition, WithoutFetchIDTheIDIsNotDelivered) {
  EXPECT_EQ(Parse(WithCond("")).fetchID, std::nullopt);
}

TEST(Condition, PlainOperatorsAreRead) {
  EXPECT_EQ(ConditionTree(Attr("A", "=", "1")), "equal A [1]");
  EXPECT_EQ(ConditionTree(Attr("A", "&lt;", "1")), "less A [1]");
  EXPECT_EQ(ConditionTree(Attr("A", "&gt;", "1")), "more A [1]");
  EXPECT_EQ(ConditionTree(Attr("A", "like", "x*")), "like A [x*]");
  EXPECT_EQ(ConditionTree(Attr("A", "in", "x,y")), "in A [x][y]");
}

TEST(Condition, ShownOperatorsComeAsTheirNegatedOpposite) {
  EXPECT_EQ(ConditionTree(Attr("A", "&lt;&gt;", "1")), "not equal A [1]");
  EXPECT_EQ(ConditionTree(Attr("A", "&lt;=", "5")), "not more A [5]");
  EXPECT_EQ(ConditionTree(Attr("A", "&gt;=", "5")), "not less A [5]");
  EXPECT_EQ(ConditionTree(Attr("A", "not like", "x*")), "not like A [x*]");
  EXPECT_EQ(ConditionTree(Attr("A", "not in", "x,y")), "not in A [x][y]");
}

TEST(Condition, NegateTurnsATestRound) {
  EXPECT_EQ(ConditionTree(Attr("A", "&gt;", "5", "negate=\"true\"")), "not more A [5]");
  EXPECT_EQ(ConditionTree(Attr("A", "&gt;", "5", "negate=\"false\"")), "more A [5]");
}

TEST(Condition, NegateAndAShownOperatorCancelOut) {
  EXPECT_EQ(ConditionTree(Attr("A", "&lt;=", "5", "negate=\"true\"")), "more A [5]");
  EXPECT_EQ(ConditionTree(Attr("A", "not in", "x", "negate=\"true\"")), "in A [x]");
}

TEST(Condition, EmptyArgumentIsTheEmptyText) {
  EXPECT_EQ(ConditionTree(Attr("A", "=", "")), "equal A []");
  EXPECT_EQ(ConditionTree(Attr("A", "in", "")), "in A []");
}

TEST(Condition, ArgumentOfInIsSplitAndTrimmed) {
  EXPECT_EQ(ConditionTree(Attr("A", "in", "  a b , c,,d ")), "in A [a b][c][][d]");
}

TEST(Condition, OnlyInSplitsItsArgument) {
  const ConditionObject object = Parse(WithCond(Attr("A", "=", " a,b ")));
  const auto& test = std::get<ConditionTest>(object.condition->node);
  EXPECT_EQ(test.arg, " a,b ");
  EXPECT_TRUE(test.items.empty());
}

TEST(Condition, MarksOfTheFilterLanguageAreDataInAnArgument) {
  EXPECT_EQ(ConditionTree(Attr("A", "=", "~(x&amp;y)|\\,z")), "equal A [~(x&y)|\\,z]");
}

TEST(Condition, AndAndOrHoldTheirTestsInOrder) {
  EXPECT_EQ(ConditionTree("<and>" + Attr("A", "=", "1") + "<or>" + Attr("B", "=", "2") + Attr("B", "=", "3") + "</or>" +
                          Attr("C", "=", "4") + "</and>"),
            "and(equal A [1], or(equal B [2], equal B [3]), equal C [4])");
}

TEST(Condition, AndAndOrMayHoldASingleTest) {
  EXPECT_EQ(ConditionTree("<and><or>" + Attr("A", "=", "1") + "</or></and>"), "and(or(equal A [1]))");
}

TEST(Condition, AndOrAndRelatedMayBeNegated) {
  EXPECT_EQ(
      ConditionTree("<and negate=\"true\"><or negate=\"true\">" + Attr("A", "=", "1") +
                    "</or><related negate=\"true\"><reltype><rel name=\"Has\"/></reltype><object><objecttype><type "
                    "name=\"RULEIO\"/></objecttype></object></related></and>"),
      "not and(not or(equal A [1]), not related(Has RULEIO))");
}

TEST(Condition, RelatedObjectHasAConditionOfItsOwn) {
  EXPECT_EQ(ConditionTree("<and>" + Attr("A", "=", "1") +
                          Related("Has", "RULEIO", Attr("IOName", "like", "x*", "negate=\"true\"")) +
                          Related("IsControlledBy", "RULECOND", "") + "</and>"),
            "and(equal A [1], related(Has RULEIO: not like IOName [x*]), related(IsControlledBy RULECOND))");
}

TEST(Condition, RelatedObjectsNest) {
  EXPECT_EQ(ConditionTree(Related("Has", "RULEIO", Related("BelongsTo", "RULE", Attr("A", "=", "1")))),
            "related(Has RULEIO: related(BelongsTo RULE: equal A [1]))");
}

TEST(Condition, TextAndCommentsArePassedOver) {
  EXPECT_EQ(ConditionTree("\n  <!-- one -->\n  " + Attr("A", "=", "1") + "\n"), "equal A [1]");
}

TEST(Condition, ElementWithinADocumentIsReadLikeARoot) {
  platform::XmlDocument document;
  document.loadXML("<saved>" + WithCond(Attr("A", "=", "1")) + "</saved>");
  const ConditionObject object = ParseCondition(document.selectSingleNode("/saved/object"));
  EXPECT_EQ(object.entity, "RULE");
  EXPECT_TRUE(object.condition.has_value());
}

TEST(Condition, AnythingButAnObjectIsRefused) {
  EXPECT_EQ(ConditionError("<cond/>"), "search condition cond: the element \"object\" is expected");
  try {
    ParseCondition({});
    FAIL() << "no element was taken for one";
  } catch (const platform::Error& error) {
    EXPECT_STREQ(error.what(), "search condition: the element \"object\" is missing");
  }
}

TEST(Condition, MissingEntityIsRefused) {
  EXPECT_EQ(ConditionError("<object><cond/></object>"),
            "search condition object: the element \"objecttype\" is missing");
  EXPECT_EQ(ConditionError("<object><objecttype/></object>"),
            "search condition object/objecttype: the element \"type\" is missing");
  EXPECT_EQ(ConditionError("<object><objecttype><type/></objecttype></object>"),
            "search condition object/objecttype/type: the attribute \"name\" is missing");
  EXPECT_EQ(ConditionError("<object><objecttype><type name=\"\"/></objecttype></object>"),
            "search condition object/objecttype/type: the attribute \"name\" is empty");
}

TEST(Condition, SeveralEntitiesAreRefused) {
  EXPECT_EQ(ConditionError("<object><objecttype><type name=\"RULE\"/><type name=\"RULEIO\"/></objecttype></object>"),
            "search condition object/objecttype/type: the element stands here more than once");
}

TEST(Condition, RepeatedElementIsRefused) {
  const std::string type = "<objecttype><type name=\"RULE\"/></objecttype>";
  EXPECT_EQ(ConditionError("<object>" + type + type + "</object>"),
            "search condition object/objecttype: the element stands here more than once");
  EXPECT_EQ(ConditionError("<object>" + type + "<cond/><cond/></object>"),
            "search condition object/cond: the element stands here more than once");
  EXPECT_EQ(ConditionError("<object>" + type + "<fetchid/><fetchid/></object>"),
            "search condition object/fetchid: the element stands here more than once");
  EXPECT_EQ(ErrorOfCond("<related><reltype><rel name=\"A\"/></reltype><reltype><rel name=\"B\"/></reltype></related>"),
            "search condition object/cond/related/reltype: the element stands here more than once");
  EXPECT_EQ(ErrorOfCond("<related><object>" + type + "</object><object>" + type + "</object></related>"),
            "search condition object/cond/related/object: the element stands here more than once");
  EXPECT_EQ(ErrorOfCond("<related><reltype><rel name=\"A\"/><rel name=\"B\"/></reltype></related>"),
            "search condition object/cond/related/reltype/rel: the element stands here more than once");
}

TEST(Condition, UnknownElementIsRefusedWhereverItStands) {
  const std::string type = "<objecttype><type name=\"RULE\"/></objecttype>";
  EXPECT_EQ(ConditionError("<object>" + type + "<limit/></object>"),
            "search condition object/limit: the element is not expected here");
  EXPECT_EQ(ConditionError("<object><objecttype><kind/></objecttype></object>"),
            "search condition object/objecttype/kind: the element is not expected here");
  EXPECT_EQ(ConditionError("<object><objecttype><type name=\"RULE\"/><kind/></objecttype></object>"),
            "search condition object/objecttype/kind: the element is not expected here");
  EXPECT_EQ(ConditionError("<object><objecttype><type name=\"RULE\"><x/></type></objecttype></object>"),
            "search condition object/objecttype/type/x: the element is not expected here");
  EXPECT_EQ(ConditionError("<object>" + type + "<fetchid><x/></fetchid></object>"),
            "search condition object/fetchid/x: the element is not expected here");
  EXPECT_EQ(ConditionError("<object>" + type + "<fetchattr name=\"A\"><x/></fetchattr></object>"),
            "search condition object/fetchattr/x: the element is not expected here");
  EXPECT_EQ(ErrorOfCond("<not/>"), "search condition object/cond/not: the element is not expected here");
  EXPECT_EQ(ErrorOfCond("<and><xor/></and>"), "search condition object/cond/and/xor: the element is not expected here");
  EXPECT_EQ(ErrorOfCond("<related><x/></related>"),
            "search condition object/cond/related/x: the element is not expected here");
  EXPECT_EQ(ErrorOfCond("<attr name=\"A\" op=\"=\" arg=\"1\"><x/></attr>"),
            "search condition object/cond/attr/x: the element is not expected here");
}

TEST(Condition, InnerObjectDeliversNothing) {
  EXPECT_EQ(ErrorOfCond("<related><object><fetchid as=\"X\"/></object></related>"),
            "search condition object/cond/related/object/fetchid: the element is not expected here");
  EXPECT_EQ(ErrorOfCond("<related><object><fetchattr name=\"X\"/></object></related>"),
            "search condition object/cond/related/object/fetchattr: the element is not expected here");
}

TEST(Condition, MissingAttributeOfATestIsRefused) {
  EXPECT_EQ(ErrorOfCond("<and><attr name=\"A\" arg=\"1\"/></and>"),
            "search condition object/cond/and/attr: the attribute \"op\" is missing");
  EXPECT_EQ(ErrorOfCond("<attr op=\"=\" arg=\"1\"/>"),
            "search condition object/cond/attr: the attribute \"name\" is missing");
  EXPECT_EQ(ErrorOfCond("<attr name=\"A\" op=\"=\"/>"),
            "search condition object/cond/attr: the attribute \"arg\" is missing");
  EXPECT_EQ(ErrorOfCond(Attr("", "=", "1")), "search condition object/cond/attr: the attribute \"name\" is empty");
}

TEST(Condition, MissingNameOfAnAttributeToDeliverIsRefused) {
  EXPECT_EQ(ConditionError("<object><fetchattr as=\"X\"/></object>"),
            "search condition object/fetchattr: the attribute \"name\" is missing");
}

TEST(Condition, EmptyAliasIsRefused) {
  EXPECT_EQ(ConditionError("<object><fetchattr name=\"A\" as=\"\"/></object>"),
            "search condition object/fetchattr: the attribute \"as\" is empty");
  EXPECT_EQ(ConditionError("<object><fetchid as=\"\"/></object>"),
            "search condition object/fetchid: the attribute \"as\" is empty");
}

TEST(Condition, UnknownOrderIsRefused) {
  EXPECT_EQ(ConditionError("<object><fetchattr name=\"A\" order=\"up\"/></object>"),
            "search condition object/fetchattr: the attribute \"order\" has the value \"up\"; \"asc\" or \"desc\" is "
            "expected");
}

TEST(Condition, UnknownOperatorIsRefused) {
  EXPECT_EQ(ErrorOfCond(Attr("A", "~", "1")),
            "search condition object/cond/attr: the attribute \"op\" has the value \"~\"; =, <, >, <>, <=, >=, like, "
            "not like, in or not in is expected");
  EXPECT_EQ(ErrorOfCond(Attr("A", std::string(300, 'o'), "1")),
            "search condition object/cond/attr: the attribute \"op\" has the value \"" + std::string(200, 'o') +
                "...\"; =, <, >, <>, <=, >=, like, not like, in or not in is expected");
}

TEST(Condition, UnknownValueOfNegateIsRefused) {
  EXPECT_EQ(ErrorOfCond("<or negate=\"yes\">" + Attr("A", "=", "1") + "</or>"),
            "search condition object/cond/or: the attribute \"negate\" has the value \"yes\"; \"true\" or \"false\" is "
            "expected");
}

TEST(Condition, EmptyAndOrOrIsRefused) {
  EXPECT_EQ(ErrorOfCond("<and/>"), "search condition object/cond/and: a condition is missing in the element");
  EXPECT_EQ(ErrorOfCond("<and><or/></and>"),
            "search condition object/cond/and/or: a condition is missing in the element");
}

TEST(Condition, SecondConditionInCondIsRefused) {
  EXPECT_EQ(ErrorOfCond(Attr("A", "=", "1") + Attr("B", "=", "1")),
            "search condition object/cond: the element holds more than one condition; \"and\" or \"or\" joins them");
}

TEST(Condition, RelatedWithoutRelationOrObjectIsRefused) {
  EXPECT_EQ(ErrorOfCond("<related><object><objecttype><type name=\"RULEIO\"/></objecttype></object></related>"),
            "search condition object/cond/related: the element \"reltype\" is missing");
  EXPECT_EQ(ErrorOfCond("<related><reltype><rel name=\"Has\"/></reltype></related>"),
            "search condition object/cond/related: the element \"object\" is missing");
  EXPECT_EQ(ErrorOfCond("<related><reltype/></related>"),
            "search condition object/cond/related/reltype: the element \"rel\" is missing");
  EXPECT_EQ(ErrorOfCond("<related><reltype><rel/></reltype></related>"),
            "search condition object/cond/related/reltype/rel: the attribute \"name\" is missing");
}

TEST(Condition, DepthIsTakenUpToItsBound) {
  EXPECT_EQ(ConditionTree(Nested("<and>", 99, Attr("A", "=", "1"), "</and>")), Nested("and(", 99, "equal A [1]", ")"));
}

TEST(Condition, DepthBeyondItsBoundIsRefused) {
  const std::string path = "object/cond" + Nested("/and", 100, "", "");
  EXPECT_EQ(ErrorOfCond(Nested("<and>", 100, Attr("A", "=", "1"), "</and>")),
            "search condition " + path.substr(0, 200) + "...: conditions stand more than 100 deep within each other");
}

TEST(Condition, WideConditionIsRead) {
  std::string tests;
  for (int i = 0; i < 100000; ++i) tests += Attr("A", "=", std::to_string(i));
  const ConditionObject object = Parse(WithCond("<or>" + tests + "</or>"));
  const auto& children = std::get<ConditionOr>(object.condition->node).children;
  ASSERT_EQ(children.size(), 100000U);
  EXPECT_EQ(std::get<ConditionTest>(children.back().node).arg, "99999");
}

}  // namespace
}  // namespace qmrules::workbench::repository
