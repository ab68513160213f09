// What a filter lets through.

#include <gtest/gtest.h>

#include <random>
#include <set>

#include "platform/fetch.h"
#include "support/errortext.h"
#include "support/teststore.h"
#include "workbench/repository/fetchrows.h"

namespace qmrules::test {
namespace {

using platform::FilterValue;
using platform::Value;

const std::string kBillableAttribute =
    "<repstry><entities><entity name='RULE'><entityattrs><entityattr name='Billable' type='BOOLEAN'/>"
    "</entityattrs></entity></entities></repstry>";

class FilterOnRules : public ::testing::Test {
 protected:
  std::int32_t Add(const std::map<std::string, Value>& attributes) { return store.Add("RULE", "n", attributes); }
  std::string Passing(const std::string& filter) { return IDs(store.Repository(), "RULE", filter); }
  TestStore store{kBillableAttribute};
};

TEST_F(FilterOnRules, EqualHeedsCase) {
  Add({{"RuleName", "Rate"}});
  Add({{"RuleName", "rate"}});
  EXPECT_EQ(Passing("RuleName=Rate"), "1");
  EXPECT_EQ(Passing("RuleName<>Rate"), "2");
  EXPECT_EQ(Passing("RuleName in rate,x"), "2");
}

TEST_F(FilterOnRules, LikeIgnoresCase) {
  Add({{"RuleName", "Rate of Interest"}});
  Add({{"RuleName", "RATE"}});
  Add({{"RuleName", "Überrate"}});
  EXPECT_EQ(Passing("RuleName like rate*"), "1;2");
  EXPECT_EQ(Passing("RuleName like über????"), "3");
  EXPECT_EQ(Passing("~RuleName like *rate"), "1");
  EXPECT_EQ(Passing("SeqNo like *"), "1;2;3");
}

TEST_F(FilterOnRules, NumbersCompareAsNumbers) {
  for (const int number : {2, 10, -3}) Add({{"SeqNo", number}});
  EXPECT_EQ(Passing("SeqNo>2"), "2");
  EXPECT_EQ(Passing("SeqNo>=2"), "1;2");
  EXPECT_EQ(Passing("SeqNo<10"), "1;3");
  EXPECT_EQ(Passing("SeqNo<=-3"), "3");
  EXPECT_EQ(Passing("SeqNo in 10,-3"), "2;3");
  EXPECT_EQ(Passing("ID>1"), "2;3");
}

TEST_F(FilterOnRules, TextsCompareByTheirCharacters) {
  for (const auto* text : {"B", "a", "10", "9"}) Add({{"RuleName", text}});
  EXPECT_EQ(Passing("RuleName<9"), "3");
  EXPECT_EQ(Passing("RuleName>B"), "2");
  EXPECT_EQ(Passing("RuleName>=B"), "1;2");
}

TEST_F(FilterOnRules, DatesCompareAsMomentsInEitherForm) {
  Add({{"Validated", "2026-01-01 00:00:00"}});
  Add({{"Validated", "2026-01-02 12:00:00"}});
  EXPECT_EQ(Passing("Validated=2026-01-01"), "1");
  EXPECT_EQ(Passing("Validated>2026-01-02T11:59"), "2");
  EXPECT_EQ(Passing("Validated in 2026-01-02 12:00,2020-01-01"), "2");
}

TEST_F(FilterOnRules, BooleansCompareInAnyCase) {
  Add({{"Billable", true}});
  Add({{"Billable", false}});
  Add({});
  EXPECT_EQ(Passing("Billable=TRUE"), "1");
  EXPECT_EQ(Passing("Billable=false"), "2");
  EXPECT_EQ(Passing("Billable="), "3");
  EXPECT_EQ(Passing("~Billable=true"), "2;3");
}

TEST_F(FilterOnRules, ATermMayAskForEmptyAndForNotEmpty) {
  Add({{"Program", "GSS1"}, {"FileName", "a.cbl"}, {"Model", "COBOL"}});
  Add({{"Program", "GSS1"}, {"FileName", ""}, {"Model", "COBOL"}});
  Add({{"Program", "GSS1"}, {"Model", "COBOL"}});
  Add({});
  EXPECT_EQ(Passing("~Program="), "1;2;3");
  EXPECT_EQ(Passing("Program="), "4");
  EXPECT_EQ(Passing("(Model=COBOL&Program=GSS1&~FileName=)"), "1");
  EXPECT_EQ(Passing("(Model=COBOL&Program=GSS1&FileName=)"), "2;3");
  EXPECT_EQ(Passing("(Model=COBOL&Program=GSS1&FileName=a.cbl)"), "1");
  EXPECT_EQ(Passing("ID in 1,4&Program="), "4");
}

TEST_F(FilterOnRules, AlternativesBindLooserThanConjunctions) {
  for (int i = 1; i <= 4; ++i) Add({{"SeqNo", i}, {"Valid", i % 2 == 0 ? "Valid" : "Invalid"}});
  EXPECT_EQ(Passing("(ID=1|ID=3)"), "1;3");
  EXPECT_EQ(Passing("ID=1|ID=2&Valid=Invalid|ID=4"), "1;4");
  EXPECT_EQ(Passing("(ID=1|ID=2)&Valid=Valid"), "2");
  EXPECT_EQ(Passing("~(ID=1|ID=2&Valid=Valid)"), "3;4");
}

TEST_F(FilterOnRules, ABlankFilterFiltersNothing) {
  Add({});
  EXPECT_EQ(Passing(""), "1");
  EXPECT_EQ(Passing("  "), "1");
}

TEST_F(FilterOnRules, ProgramsThatHaveEitherKindOfDataAreFound) {
  const auto program = [&](const Value& depends, const Value& relations) {
    store.Add("COBOL", "P", {{"DataDepends", depends}, {"DataRelations", relations}});
  };
  program(true, Value());
  program(false, true);
  program(false, false);
  program(Value(), Value());
  EXPECT_EQ(IDs(store.Repository(), "COBOL", "DataDepends=true|DataRelations=true"), "1;2");
  EXPECT_EQ(IDs(store.Repository(), "COBOL", "(DataDepends=true|DataRelations=true)&Name=P"), "1;2");
}

TEST_F(FilterOnRules, AFreeTextIsDataWhateverItHolds) {
  const std::vector<std::string> texts = {
      "&",      "|",       "~",        "(",     ")",         ",",     "\\",
      "\\\\",   "a&b|c",   "((",       "))",    ")(",        "~a",    "a,b",
      "O'Hara", "\"x\"",   "''",       "%",     "_",         "*",     "?",
      "[a]",    "=",       ">x",       "<x",    "=x",        " lead", "trail ",
      "\t",     "\r\n",    "-- x",     "; x",   "x\\",       "Ä(Ö)",  "\xF0\x9F\x8E\xB2&",
      "in 1,2", "like *x", "a=b&ID=1", "?1 :x", "x'; update"};
  for (const auto& text : texts) Add({{"Program", text}});
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const auto id = std::to_string(i + 1);
    const auto value = FilterValue(texts[i]);
    EXPECT_EQ(Passing("Program=" + value), id) << texts[i];
    EXPECT_EQ(Passing("(Model=&Program=" + value + "&FileName=)"), id) << texts[i];
    EXPECT_EQ(Passing("(Program in (" + value + ",nothing)|ID=0)"), id) << texts[i];
    EXPECT_EQ(store.Repository().CountObjects("RULE", "~Program=" + value), static_cast<int>(texts.size()) - 1);
  }
}

TEST_F(FilterOnRules, AValueMayHoldPairedParenthesesBare) {
  Add({{"RuleName", "f(a&b)"}});
  EXPECT_EQ(Passing("(RuleName=f(a&b)|RuleName=x)"), "1");
}

TEST_F(FilterOnRules, AnAbsentValueCountsAsTheEmptyText) {
  Add({{"RuleName", "a"}, {"SeqNo", -5}});
  Add({{"RuleName", ""}});
  Add({});
  EXPECT_EQ(Passing("RuleName="), "2;3");
  EXPECT_EQ(Passing("RuleName<a"), "2;3");
  EXPECT_EQ(Passing("RuleName>"), "1");
  EXPECT_EQ(Passing("RuleName<"), "");
  EXPECT_EQ(Passing("RuleName>="), "1;2;3");
  EXPECT_EQ(Passing("RuleName<="), "2;3");
  EXPECT_EQ(Passing("RuleName in a,"), "1;2;3");
  EXPECT_EQ(Passing("~RuleName in a"), "2;3");
  EXPECT_EQ(Passing("~RuleName in x,"), "1");
  EXPECT_EQ(Passing("RuleName<>a"), "2;3");
  EXPECT_EQ(Passing("RuleName like "), "2;3");
  EXPECT_EQ(Passing("SeqNo<-4"), "1;2;3");
  EXPECT_EQ(Passing("SeqNo>-6"), "1");
  EXPECT_EQ(Passing("~SeqNo>-6"), "2;3");
  EXPECT_EQ(Passing("SeqNo="), "2;3");
  EXPECT_EQ(Passing("SeqNo<>"), "1");
}

TEST_F(FilterOnRules, ATextThatIsNotUtf8MatchesNothingOrIsRefused) {
  Add({{"RuleName", "a"}});
  EXPECT_EQ(Passing("RuleName=\xFF"), "");
  EXPECT_EQ(ErrorText([&] { Passing("RuleName in a,\xFF"); }),
            "filter \"RuleName in a,\xFF\" column 13: the text is not UTF-8");
}

TEST_F(FilterOnRules, AThousandAlternativesAreOneFilter) {
  for (int i = 0; i < 5; ++i) Add({{"SeqNo", i}});
  std::string either = "SeqNo=100";
  std::string all = "SeqNo<>100";
  for (int i = 101; i < 5100; ++i) {
    either += "|SeqNo=" + std::to_string(i);
    all += "&SeqNo<>" + std::to_string(i);
  }
  EXPECT_EQ(Passing(either + "|SeqNo=3"), "4");
  EXPECT_EQ(Passing(all + "&SeqNo<>3"), "1;2;3;5");
}

// Alternatives and conjunctions in turn, `levels` of them, with the deeper part at the given side.
std::string Nested(int levels, bool atEnd) {
  std::string filter = "SeqNo=0";
  for (int level = 0; level < levels; ++level) {
    const std::string test = level % 2 == 0 ? "SeqNo=1" : "SeqNo<>3";
    const char* joint = level % 2 == 0 ? "|" : "&";
    filter = "(" + (atEnd ? test + joint + filter : filter + joint + test) + ")";
  }
  return filter;
}

TEST_F(FilterOnRules, NestingIsRunUpToItsBoundAndRefusedBeyond) {
  for (int i = 0; i < 4; ++i) Add({{"SeqNo", i}});
  for (const bool atEnd : {true, false}) {
    EXPECT_EQ(Passing(Nested(20, atEnd)), "1;2");
    EXPECT_EQ(Passing("~" + Nested(20, atEnd)), "3;4");
    const auto filter = Nested(21, atEnd);
    EXPECT_EQ(ErrorText([&] { Passing(filter); }), "filter \"" + filter.substr(0, 200) +
                                                       "...\" column 1: conditions stand too deep within each other; "
                                                       "state it with fewer levels");
  }
}

TEST_F(FilterOnRules, ParenthesesAndNegationsAloneNestDeeper) {
  Add({});
  Add({});
  EXPECT_EQ(Passing(std::string(199, '(') + "ID=1" + std::string(199, ')')), "1");
  EXPECT_EQ(Passing(std::string(199, '~') + "ID=1"), "2");
}

// A random filter over a few attributes, whose values meet what the objects have.
class RandomFilter {
 public:
  explicit RandomFilter(unsigned seed) : random_(seed) {}
  std::string Next(int depth = 3) {
    switch (depth > 0 ? Pick(5) : 4) {
      case 0:
        return "~" + Next(depth - 1);
      case 1:
        return "(" + Next(depth - 1) + "&" + Next(depth - 1) + ")";
      case 2:
        return "(" + Next(depth - 1) + "|" + Next(depth - 1) + ")";
      default:
        return Test();
    }
  }
  int Pick(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }
  const char* Text() {
    static const char* const texts[] = {"", "a", "A", "b", "a*", "10", "9", "\xC3\xA4"};
    return texts[Pick(8)];
  }
  const char* Number() {
    static const char* const numbers[] = {"", "0", "5", "10", "-3"};
    return numbers[Pick(5)];
  }
  const char* Date() {
    static const char* const dates[] = {"", "2026-01-01", "2026-01-02 12:00:00"};
    return dates[Pick(3)];
  }
  const char* Truth() {
    static const char* const truths[] = {"", "true", "false"};
    return truths[Pick(3)];
  }

 private:
  std::string Test() {
    static const char* const operators[] = {"=", "<>", "<", "<=", ">", ">=", " like ", " in "};
    const std::string op = operators[Pick(8)];
    const auto value = [&](const auto& next) {
      return op == " in "     ? "(" + std::string(next()) + "," + next() + ")"
             : op == " like " ? Text()
                              : std::string(next());
    };
    switch (Pick(4)) {
      case 0:
        return "RuleName" + op + value([&] { return Text(); });
      case 1:
        return "SeqNo" + op + value([&] { return Number(); });
      case 2:
        return "Validated" + op + value([&] { return Date(); });
      default:
        return "Billable" + op + value([&] { return Truth(); });
    }
  }
  std::mt19937 random_;
};

// Unset values included: every object passes either the filter or its negation.
TEST_F(FilterOnRules, AFilterAndItsNegationShareOutAllObjects) {
  RandomFilter random(20260131);
  for (int i = 0; i < 60; ++i) {
    std::map<std::string, Value> attributes;
    if (random.Pick(4) > 0) attributes["RuleName"] = random.Text();
    if (random.Pick(4) > 0) attributes["SeqNo"] = random.Number();
    if (random.Pick(4) > 0) attributes["Validated"] = random.Date();
    if (random.Pick(4) > 0) attributes["Billable"] = random.Truth();
    Add(attributes);
  }
  for (int round = 0; round < 1500; ++round) {
    const auto filter = random.Next();
    const auto passing = store.Repository().CountObjects("RULE", filter);
    ASSERT_EQ(passing + store.Repository().CountObjects("RULE", "~(" + filter + ")"), 60) << filter;
    ASSERT_EQ(store.Repository().CountObjects("RULE", "(" + filter + ")&~(" + filter + ")"), 0) << filter;
    ASSERT_EQ(store.Repository().CountObjects("RULE", "~~(" + filter + ")"), passing) << filter;
  }
}

}  // namespace
}  // namespace qmrules::test
