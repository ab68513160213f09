#include "workbench/repository/filter.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/fetch.h"
#include "support/errortext.h"

namespace qmrules::workbench::repository {
namespace {

// Writes a tree as nested calls with every value between "[" and "]", in a form that shares nothing with the language.
struct FilterDescriber {
  std::string operator()(const Comparison& comparison) const {
    static constexpr const char* kNames[] = {"equal", "notequal",    "less", "lessequal",
                                             "more",  "moreorequal", "like", "in"};
    std::string text = std::string(kNames[static_cast<int>(comparison.op)]) + " " + comparison.name + " ";
    if (comparison.op != FilterOperator::In) return text + "[" + comparison.value + "]";
    for (const ListItem& item : comparison.items) text += "[" + item.text + "]";
    for (const std::int64_t id : comparison.ids) text += "<" + std::to_string(id) + ">";
    return text;
  }
  std::string operator()(const FilterNot& negation) const {
    return "not(" + std::visit(*this, negation.operand->node) + ")";
  }
  std::string operator()(const FilterAnd& all) const { return "and(" + Join(all.children) + ")"; }
  std::string operator()(const FilterOr& either) const { return "or(" + Join(either.children) + ")"; }

  std::string Join(const std::vector<FilterExpression>& children) const {
    std::string text;
    for (const FilterExpression& child : children) {
      text += (text.empty() ? "" : ", ") + std::visit(*this, child.node);
    }
    return text;
  }
};

std::string FilterTree(std::string_view filter) {
  const auto expression = ParseFilter(filter);
  return expression ? std::visit(FilterDescriber(), expression->node) : "none";
}

// The whole text of the error that reading the filter ends with; "(no error)" when it ends with none.
std::string FilterError(std::string_view filter) {
  return test::ErrorText([&] { ParseFilter(filter); });
}

const Comparison& OnlyComparison(const std::unique_ptr<FilterExpression>& expression) {
  return std::get<Comparison>(expression->node);
}

std::string Repeated(std::string_view text, int times) {
  std::string repeated;
  for (int i = 0; i < times; ++i) repeated += text;
  return repeated;
}

TEST(Filter, EmptyOrBlankTextIsNoFilter) {
  EXPECT_EQ(ParseFilter(""), nullptr);
  EXPECT_EQ(ParseFilter("   "), nullptr);
}

TEST(Filter, EqualTakesABareValue) {
  EXPECT_EQ(FilterTree("ID=1234"), "equal ID [1234]");
  EXPECT_EQ(FilterTree("Valid=Valid"), "equal Valid [Valid]");
}

TEST(Filter, EveryOperatorIsRead) {
  EXPECT_EQ(FilterTree("A=1"), "equal A [1]");
  EXPECT_EQ(FilterTree("A<>1"), "notequal A [1]");
  EXPECT_EQ(FilterTree("A<1"), "less A [1]");
  EXPECT_EQ(FilterTree("A<=1"), "lessequal A [1]");
  EXPECT_EQ(FilterTree("A>1"), "more A [1]");
  EXPECT_EQ(FilterTree("A>=1"), "moreorequal A [1]");
  EXPECT_EQ(FilterTree("A like 1*"), "like A [1*]");
  EXPECT_EQ(FilterTree("A in 1,b"), "in A [1][b]");
}

TEST(Filter, WordsAreReadInAnyCase) {
  EXPECT_EQ(FilterTree("Name LIKE x"), "like Name [x]");
  EXPECT_EQ(FilterTree("Name Like x"), "like Name [x]");
  EXPECT_EQ(FilterTree("ID IN 1,2"), "in ID <1><2>");
  EXPECT_EQ(FilterTree("id In 1,2"), "in id <1><2>");
}

TEST(Filter, AttributeMayBeNamedLikeAWord) {
  EXPECT_EQ(FilterTree("in in a"), "in in [a]");
  EXPECT_EQ(FilterTree("like=in"), "equal like [in]");
}

TEST(Filter, EmptyValueIsTheEmptyText) {
  EXPECT_EQ(FilterTree("Program="), "equal Program []");
  EXPECT_EQ(FilterTree("~Program="), "not(equal Program [])");
  EXPECT_EQ(FilterTree("Name like "), "like Name []");
  EXPECT_EQ(FilterTree("ID=1&Name="), "and(equal ID [1], equal Name [])");
}

TEST(Filter, ListOfIDsIsRead) {
  EXPECT_EQ(FilterTree("ID in 0"), "in ID <0>");
  EXPECT_EQ(FilterTree("ID in 0,17,42"), "in ID <0><17><42>");
  EXPECT_EQ(FilterTree("~ID in 0"), "not(in ID <0>)");
}

TEST(Filter, ListMayStandInParentheses) {
  EXPECT_EQ(FilterTree("ID in (0,17)"), "in ID <0><17>");
  EXPECT_EQ(FilterTree("ID in ( 0 , 17 ) "), "in ID <0><17>");
  EXPECT_EQ(FilterTree("(ID in (0,17) |Name in (a,b))&X=1"), "and(or(in ID <0><17>, in Name [a][b]), equal X [1])");
}

TEST(Filter, ListOfIDsAllowsBlanksAndDropsDuplicates) {
  EXPECT_EQ(FilterTree("ID in 3, 1 ,3,2"), "in ID <3><1><2>");
}

TEST(Filter, ItemsOfATextListKeepTheirBlanks) {
  EXPECT_EQ(FilterTree("Name in a, b ,c "), "in Name [a][ b ][c ]");
  EXPECT_EQ(FilterTree("Name in  a"), "in Name [a]");
  EXPECT_EQ(FilterTree("Name in ( a)"), "in Name [ a]");
}

TEST(Filter, EscapedCommaIsDataOfAnItem) {
  EXPECT_EQ(FilterTree("Name in a\\,b,c"), "in Name [a,b][c]");
  EXPECT_EQ(FilterTree("Name in (a\\,b,\\))"), "in Name [a,b][)]");
}

TEST(Filter, CommaInParenthesesOfAnItemIsData) {
  EXPECT_EQ(FilterTree("Name in f(a,b),c"), "in Name [f(a,b)][c]");
  EXPECT_EQ(FilterTree("Name in (f(a,b),c)"), "in Name [f(a,b)][c]");
}

TEST(Filter, ParenthesesThatEndBeforeTheListBelongToItsItems) {
  EXPECT_EQ(FilterTree("Name in (a),(b)"), "in Name [(a)][(b)]");
  EXPECT_EQ(FilterTree("Name in ((a),(b))"), "in Name [(a)][(b)]");
  EXPECT_EQ(FilterTree("Name in (a\\)),b"), "in Name [(a))][b]");
}

TEST(Filter, EmptyItemOfATextListIsTheEmptyText) {
  EXPECT_EQ(FilterTree("Name in a,,b"), "in Name [a][][b]");
  EXPECT_EQ(FilterTree("Name in ,"), "in Name [][]");
}

TEST(Filter, CommaInAPlainValueIsData) {
  EXPECT_EQ(FilterTree("Name=a,b"), "equal Name [a,b]");
}

TEST(Filter, AndJoinsAllItsTerms) {
  EXPECT_EQ(FilterTree("A=1&B=2&C=3"), "and(equal A [1], equal B [2], equal C [3])");
}

TEST(Filter, OrJoinsAllItsTerms) {
  EXPECT_EQ(FilterTree("(ID=1|ID=2|ID=3)"), "or(equal ID [1], equal ID [2], equal ID [3])");
}

TEST(Filter, NotBindsTighterThanAndAndAndTighterThanOr) {
  EXPECT_EQ(FilterTree("~A=1&B=2|C=3&~D=4"),
            "or(and(not(equal A [1]), equal B [2]), and(equal C [3], not(equal D [4])))");
}

TEST(Filter, GroupingOverridesPrecedence) {
  EXPECT_EQ(FilterTree("~(A=1&(B=2|C=3))"), "not(and(equal A [1], or(equal B [2], equal C [3])))");
}

TEST(Filter, GroupsKeepTheirShape) {
  EXPECT_EQ(FilterTree("(A=1&B=2)&C=3"), "and(and(equal A [1], equal B [2]), equal C [3])");
  EXPECT_EQ(FilterTree("((A=1))"), "equal A [1]");
}

TEST(Filter, DoubledNegationStays) {
  EXPECT_EQ(FilterTree("~~A=1"), "not(not(equal A [1]))");
}

TEST(Filter, GroupOfThreeTermsWithANegatedOne) {
  EXPECT_EQ(FilterTree("(Model=COBOL&Program=GSS1&~FileName=)"),
            "and(equal Model [COBOL], equal Program [GSS1], not(equal FileName []))");
}

TEST(Filter, BlanksAroundNamesAndGroupsArePassedOver) {
  EXPECT_EQ(FilterTree("  A =1&  ~  B=2"), "and(equal A [1], not(equal B [2]))");
  EXPECT_EQ(FilterTree(" ( A=1) & ( B=2) "), "and(equal A [1], equal B [2])");
  EXPECT_EQ(FilterTree("Name   like   x"), "like Name [x]");
}

TEST(Filter, BlanksOfAValueAreKept) {
  EXPECT_EQ(FilterTree("A= a  b &B=c "), "and(equal A [ a  b ], equal B [c ])");
  EXPECT_EQ(FilterTree("(A=x )"), "equal A [x ]");
  EXPECT_EQ(FilterTree("A like x "), "like A [x ]");
}

TEST(Filter, OperatorsInAValueAreData) {
  EXPECT_EQ(FilterTree("A=~b=c<d>e"), "equal A [~b=c<d>e]");
  EXPECT_EQ(FilterTree("A==1"), "equal A [=1]");
  EXPECT_EQ(FilterTree("A=b like c in d"), "equal A [b like c in d]");
}

TEST(Filter, LongestOperatorIsRead) {
  EXPECT_EQ(FilterTree("A<=1"), "lessequal A [1]");
  EXPECT_EQ(FilterTree("A<\\=1"), "less A [=1]");
  EXPECT_EQ(FilterTree("A<>=1"), "notequal A [=1]");
}

TEST(Filter, EscapedCharacterIsData) {
  EXPECT_EQ(FilterTree("A=R\\&D\\|x\\)y\\(z\\~\\\\\\,"), "equal A [R&D|x)y(z~\\,]");
  EXPECT_EQ(FilterTree("A=\\a\\\xC3\xA9"), "equal A [a\xC3\xA9]");
  EXPECT_EQ(FilterTree("A like \\ x"), "like A [ x]");
}

TEST(Filter, BalancedParenthesesInAValueBelongToIt) {
  EXPECT_EQ(FilterTree("(Name=f(a&b)|Name=x)"), "or(equal Name [f(a&b)], equal Name [x])");
  EXPECT_EQ(FilterTree("Name=(a)(b(c|d))e&B=1"), "and(equal Name [(a)(b(c|d))e], equal B [1])");
  EXPECT_EQ(FilterTree("Name=f(a\\))"), "equal Name [f(a))]");
}

TEST(Filter, UnbalancedParenthesisEndsAValue) {
  EXPECT_EQ(FilterTree("(A=x)&B=1"), "and(equal A [x], equal B [1])");
}

TEST(Filter, LineEndsAndForeignCharactersAreData) {
  EXPECT_EQ(FilterTree("A=x\r\ny\t\xE6\x97\xA5"), "equal A [x\r\ny\t\xE6\x97\xA5]");
}

TEST(Filter, BytesThatAreNoUtf8AreData) {
  EXPECT_EQ(FilterTree("A=\xFF\xC3&B=1"), "and(equal A [\xFF\xC3], equal B [1])");
}

TEST(Filter, ComparisonKnowsItsColumns) {
  // U+1F600 takes two of the characters that columns count.
  const auto expression = ParseFilter("A=\xF0\x9F\x98\x80& Bc like  x|ID in (1)");
  const auto& either = std::get<FilterOr>(expression->node);
  const auto& all = std::get<FilterAnd>(either.children[0].node);
  const auto& second = std::get<Comparison>(all.children[1].node);
  EXPECT_EQ(second.nameColumn, 7U);
  EXPECT_EQ(second.valueColumn, 16U);
  const auto& third = std::get<Comparison>(either.children[1].node);
  EXPECT_EQ(third.nameColumn, 18U);
  EXPECT_EQ(third.valueColumn, 24U);
}

TEST(Filter, ItemsKnowTheirColumns) {
  const auto expression = ParseFilter("Name in (a,\xC3\xA9\\,b,c)");
  const auto& items = OnlyComparison(expression).items;
  ASSERT_EQ(items.size(), 3U);
  EXPECT_EQ(items[0].column, 10U);
  EXPECT_EQ(items[1].column, 12U);
  EXPECT_EQ(items[2].column, 17U);
}

TEST(Filter, MissingComparisonIsRefused) {
  EXPECT_EQ(FilterError("ID=1&"), "filter \"ID=1&\" column 6: a comparison is expected");
  EXPECT_EQ(FilterError("&ID=1"), "filter \"&ID=1\" column 1: a comparison is expected");
  EXPECT_EQ(FilterError("ID=1||ID=2"), "filter \"ID=1||ID=2\" column 6: a comparison is expected");
  EXPECT_EQ(FilterError("~"), "filter \"~\" column 2: a comparison is expected");
  EXPECT_EQ(FilterError("()"), "filter \"()\" column 2: a comparison is expected");
  EXPECT_EQ(FilterError("=1"), "filter \"=1\" column 1: a comparison is expected");
  EXPECT_EQ(FilterError("ID=1& "), "filter \"ID=1& \" column 7: a comparison is expected");
}

TEST(Filter, MissingOperatorIsRefused) {
  EXPECT_EQ(FilterError("ID"), "filter \"ID\" column 3: an operator is expected (=, <>, <, <=, >, >=, like, in)");
  EXPECT_EQ(FilterError("ID&X=1"),
            "filter \"ID&X=1\" column 3: an operator is expected (=, <>, <, <=, >, >=, like, in)");
  EXPECT_EQ(FilterError("Name is x"),
            "filter \"Name is x\" column 6: an operator is expected (=, <>, <, <=, >, >=, like, in)");
  EXPECT_EQ(FilterError("ID!=1"), "filter \"ID!=1\" column 3: an operator is expected (=, <>, <, <=, >, >=, like, in)");
}

TEST(Filter, WordOperatorNeedsABlankBehindIt) {
  EXPECT_EQ(FilterError("Name like"),
            "filter \"Name like\" column 6: an operator is expected (=, <>, <, <=, >, >=, like, in)");
  EXPECT_EQ(FilterError("ID in(1)"),
            "filter \"ID in(1)\" column 4: an operator is expected (=, <>, <, <=, >, >=, like, in)");
  EXPECT_EQ(FilterError("Name inx a"),
            "filter \"Name inx a\" column 6: an operator is expected (=, <>, <, <=, >, >=, like, in)");
}

TEST(Filter, GroupLeftOpenIsRefused) {
  EXPECT_EQ(FilterError("(A=1&B=2"), "filter \"(A=1&B=2\" column 9: a \")\" is expected for the \"(\" of column 1");
  EXPECT_EQ(FilterError("A=1&~(B=2|(C=3)"),
            "filter \"A=1&~(B=2|(C=3)\" column 16: a \")\" is expected for the \"(\" of column 6");
}

TEST(Filter, ParenthesisOfAValueLeftOpenIsRefused) {
  EXPECT_EQ(FilterError("Name=f(a&B=1"),
            "filter \"Name=f(a&B=1\" column 13: a \")\" is expected for the \"(\" of column 7");
  EXPECT_EQ(FilterError("Name in (a,b"),
            "filter \"Name in (a,b\" column 13: a \")\" is expected for the \"(\" of column 9");
}

TEST(Filter, ClosingParenthesisTooManyIsRefused) {
  EXPECT_EQ(FilterError("ID=1)"), "filter \"ID=1)\" column 5: a \"(\" is expected before this \")\"");
  EXPECT_EQ(FilterError("(ID=1))"), "filter \"(ID=1))\" column 7: a \"(\" is expected before this \")\"");
}

TEST(Filter, TextBehindAGroupIsRefused) {
  EXPECT_EQ(FilterError("(ID=1)x"), "filter \"(ID=1)x\" column 7: a \"&\" or a \"|\" is expected");
  EXPECT_EQ(FilterError("(ID=1) (ID=2)"), "filter \"(ID=1) (ID=2)\" column 8: a \"&\" or a \"|\" is expected");
}

TEST(Filter, EscapeWithoutACharacterIsRefused) {
  EXPECT_EQ(FilterError("A=x\\"), "filter \"A=x\\\" column 5: a character is expected behind the \"\\\"");
  EXPECT_EQ(FilterError("A=(x\\"), "filter \"A=(x\\\" column 6: a character is expected behind the \"\\\"");
}

TEST(Filter, EmptyListIsRefused) {
  EXPECT_EQ(FilterError("ID in "), "filter \"ID in \" column 7: a list is expected");
  EXPECT_EQ(FilterError("ID in ()"), "filter \"ID in ()\" column 8: a list is expected");
  EXPECT_EQ(FilterError("Name in &A=1"), "filter \"Name in &A=1\" column 9: a list is expected");
}

TEST(Filter, MalformedIDIsRefusedWithTheColumnInTheFilter) {
  EXPECT_EQ(FilterError("ID in 0,x"), "filter \"ID in 0,x\" column 9: a number is expected");
  EXPECT_EQ(FilterError("A=1&ID in (0,-1)"), "filter \"A=1&ID in (0,-1)\" column 14: a number is expected");
  EXPECT_EQ(FilterError("ID in 0,1 2"), "filter \"ID in 0,1 2\" column 11: a \",\" is expected");
  EXPECT_EQ(FilterError("ID in ((0))"), "filter \"ID in ((0))\" column 8: a number is expected");
}

TEST(Filter, ErrorCountsUtf16Units) {
  EXPECT_EQ(FilterError("A=\xF0\x9F\x98\x80&"), "filter \"A=\xF0\x9F\x98\x80&\" column 6: a comparison is expected");
}

TEST(Filter, ErrorShowsTheBeginningOfALongFilter) {
  EXPECT_EQ(FilterError("A=" + std::string(400, 'x') + "&"),
            "filter \"A=" + std::string(198, 'x') + "...\" column 404: a comparison is expected");
}

TEST(Filter, NestingIsTakenUpToItsBound) {
  EXPECT_EQ(FilterTree(Repeated("(", 200) + "A=1" + Repeated(")", 200)), "equal A [1]");
  EXPECT_EQ(FilterTree(Repeated("~", 200) + "A=1"), Repeated("not(", 200) + "equal A [1]" + Repeated(")", 200));
  // Side by side they do not add up.
  EXPECT_NE(ParseFilter("A=1" + Repeated("&~(B=2)", 1000)), nullptr);
}

TEST(Filter, NestingBeyondItsBoundIsRefused) {
  const std::string shown = Repeated("~(", 100) + "...";
  EXPECT_EQ(FilterError(Repeated("~(", 101) + "A=1" + Repeated(")", 101)),
            "filter \"" + shown + "\" column 201: at most 200 \"(\" and \"~\" within each other are expected");
  EXPECT_EQ(FilterError(Repeated("~", 1000000)),
            "filter \"" + Repeated("~", 200) +
                "...\" column 201: at most 200 \"(\" and \"~\" within each other are "
                "expected");
}

TEST(Filter, ParenthesesOfAValueDoNotCountAsNesting) {
  const std::string value = Repeated("(", 100000) + Repeated(")", 100000);
  EXPECT_EQ(OnlyComparison(ParseFilter("A=" + value)).value, value);
}

TEST(Filter, LengthIsTakenUpToItsBound) {
  std::string filter = "A=" + std::string(kFilterBytes - 2, 'x');
  EXPECT_EQ(OnlyComparison(ParseFilter(filter)).value.size(), kFilterBytes - 2);
  filter += 'x';
  EXPECT_EQ(FilterError(filter),
            "filter \"A=" + std::string(198, 'x') + "...\" column 1: a text of at most 67108864 bytes is expected");
}

TEST(Filter, ListOfAMillionIDsIsRead) {
  std::string filter = "~Name=&ID in 0";
  for (int id = 1; id < 1000000; ++id) filter += "," + std::to_string(id);
  const auto expression = ParseFilter(filter);
  const auto& ids = std::get<Comparison>(std::get<FilterAnd>(expression->node).children[1].node).ids;
  ASSERT_EQ(ids.size(), 1000000U);
  EXPECT_EQ(ids.front(), 0);
  EXPECT_EQ(ids.back(), 999999);
}

TEST(Filter, ListOfAMillionTextsIsRead) {
  std::string filter = "Name in x0";
  for (int id = 1; id < 1000000; ++id) filter += ",x" + std::to_string(id);
  const auto expression = ParseFilter(filter);
  const auto& items = OnlyComparison(expression).items;
  ASSERT_EQ(items.size(), 1000000U);
  EXPECT_EQ(items.back().text, "x999999");
  EXPECT_EQ(items.back().column, filter.size() - 6);
}

TEST(Filter, FilterValueMakesAnyTextData) {
  std::string everyByte;
  for (int byte = 0; byte < 256; ++byte) everyByte += static_cast<char>(byte);
  for (const std::string& data : {std::string("A & B | (C)~,\\"), std::string(" = x "), std::string(")"),
                                  std::string("\\"), std::string(), everyByte}) {
    EXPECT_EQ(OnlyComparison(ParseFilter("Name=" + platform::FilterValue(data))).value, data);
    EXPECT_EQ(FilterTree("(A=1|Name=" + platform::FilterValue(data) + ")&B=2"),
              "and(or(equal A [1], equal Name [" + data + "]), equal B [2])");
  }
}

TEST(Filter, FilterValueMakesAnyTextOneItemOfAList) {
  const std::string data = " a,(b),\\c|";
  EXPECT_EQ(FilterTree("Name in (" + platform::FilterValue(data) + "," + platform::FilterValue(data) + ")"),
            "in Name [" + data + "][" + data + "]");
}

}  // namespace
}  // namespace qmrules::workbench::repository
